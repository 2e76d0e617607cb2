// The program as its users meet it: what it answers, prints and returns.
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <thread>

#include "near_text/input/table.h"
#include "near_text/output/delimited_row.h"
#include "near_text/output/encoder.h"
#include "reference/whitespace.h"
#include "tests/test_support.h"

namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

Lines linesOf(std::string const& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

struct Outcome {
    int status;
    std::string output, errors;
};

Outcome shell(std::string const& command, std::string const& output = fileOf("out", {})) {
    std::string const errors = fileOf("err", {});
    int const status = std::system(("{ " + command + "; } >" + output + " 2>" + errors).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            output.starts_with("/dev") ? "" : contentOf(output), contentOf(errors)};
}

// `arguments` as a shell reads them.
Outcome run(std::string const& arguments, std::string const& input = {},
            std::string const& output = fileOf("out", {})) {
    return shell(NEAR_TEXT_PROGRAM " " + arguments + " <" + fileOf("in", input), output);
}

// Expects a failure that tells `part`.
void expectFailure(std::string const& part, Outcome const& outcome) {
    EXPECT_EQ(outcome.status, 2) << part;
    EXPECT_NE(outcome.errors.find(part), std::string::npos) << part << " in " << outcome.errors;
}

// A match that runs while the test talks to it. The shell tells its number and becomes the program.
class RunningMatch {
public:
    explicit RunningMatch(std::string const& arguments)
        : output_(
              popen(("echo $$; exec " NEAR_TEXT_PROGRAM " match --format tsv " + arguments).c_str(),
                    "r")),
          process_(std::stoi(line())) {}

    std::string line() const {
        std::string text;
        for (int c = 0; c != '\n' && (c = fgetc(output_)) != EOF;)
            text += static_cast<char>(c);
        return text;
    }
    // What it still writes, and its exit status.
    std::pair<std::string, int> interrupt(int signal) const {
        kill(process_, signal);
        std::string rest;
        for (std::string text; !(text = line()).empty();)
            rest += text;
        return {rest, WEXITSTATUS(pclose(output_))};
    }

private:
    FILE* output_;
    pid_t process_;
};

TEST(Program, AnswersAndReturnsAsGrepDoes) {
    std::string const list = " --dictionary " + fileOf("list", "red ball;;  ;ball\tred;blue cup\n");
    std::tuple<std::string, int, std::string> const cases[] = {
        {"compare 'red ball' 'ball red' --percent 100", 0, "alike\n"},
        {"compare '' abc --percent 16", 0, "alike\n"},
        {"compare '' abc --percent 17", 1, "different\n"},
        {"compare --percent 100 -- -a -b", 1, "different\n"},
        {"compare --percent 100 -- --percent= --percent=", 0, "alike\n"},
        {"search 'red ball' -p 100 --exclude= --indices --separator ';'" + list, 0, "0,1\n"},
        {"search 'red bal' --indices --separator ';'" + list, 0, "0,1\n"},
        {"search green --indices --separator ';'" + list, 1, ""},
        {"search green --separator ';'" + list, 1, ""},
        {"help compare", 0, run("compare -h").output}};
    for (auto const& [arguments, status, output] : cases) {
        Outcome const outcome = run(arguments);
        EXPECT_EQ(outcome.status, status) << arguments;
        EXPECT_EQ(outcome.output, output) << arguments;
        EXPECT_EQ(outcome.errors, "") << arguments;
    }
    for (auto const& [separator, note] : {std::pair(" ", "whitespace"), {"!", "does not occur"}}) {
        Outcome const noted =
            run("search red --indices --percent 0 --separator '"s + separator + '\'' + list);
        EXPECT_EQ(noted.output, "0\n");
        EXPECT_NE(noted.errors.find(note), std::string::npos);
    }

    std::string const two = fileOf("two", "a\nb\n");
    std::pair<std::string, std::string> const failures[] = {
        {"compare a b -p 101", "--percent: '101' is not a whole number from 0 to 100"},
        {"compare a b -p -1", "--percent: '-1' is no"},
        {"compare a b -p 60.5", "--percent: '60.5' is no"},
        {"compare a " + std::string(1001, 'x') + " --percent 0",
         "SECOND: String length must be no longer 1000 characters (this has 1001)"},
        {"compare a " + std::string(1001, 'x') + " --percent 0 --locale ru", "1000 символов"},
        {"", "no command is given; near_text --help lists them"},
        {"compare a b c", "'c' belongs to no option; near_text help compare lists them"},
        {"compare a \"$(printf 'b\\377')\" --percent 0", "SECOND: not valid UTF-8 at byte 2"},
        {"compare a b --percent 0 --library /none.so", "/none.so"},
        {"search red --separator ';;'" + list, "must be a single UTF-16 unit"},
        {"search red --entries x --long-percent 5", "has no effect without --threshold"},
        {"search red --entries x --threshold 5", "without --short-percent or --long-percent"},
        {"search red --entries x --threshold 5 -p 1 --short-percent 1 --long-percent 1",
         "--percent: has no effect"},
        {"search red --entries x -P -i", "--prepare: already includes --fold-case"},
        {"search red --entries x --best --top 2", "--best excludes --top"},
        {"search red --entries x --header", "--header: has no effect"},
        {"search red --entries x --indices --best", "--indices: prints the add-in's bare answer"},
        {"match -t x -e x --unmatched --top 2", "--unmatched: prints no matches"},
        {"match -t x -e x --color always -u", "--unmatched: prints no matches, so --color"},
        {"match -t x -e x --color always -f csv",
         "--color: has no effect in the format csv, only in text"},
        {"search x -e x --color always --indices", "--indices: prints the add-in's bare answer"},
        {"duplicates x -p 1 --color always -g", "--color: has no effect with --groups"},
        {"compare a b -p 1 --color always", "--color: has no effect without --explain"},
        {"match -t x -e x --keep 1", "--keep: has no effect"},
        {"match -t x -e x --part --mutual", "--mutual: needs all texts, and --part has only some"},
        {"sweep -t x -e " + two + " --pairs " + fileOf("p1", "a\tb\n1\t2\n3\n"),
         "p1:3: has 1 field"},
        {"sweep -t x -e " + two + " --pairs " + fileOf("p2", "1\t0\n"), "p2:1: '0' is not a line"},
        {"sweep -t x -e " + two + " --pairs " + fileOf("p3", "1,2\n9,3\n"),
         "p3:2: there is no entry"},
        {"sweep -t x -e " + two + " --pairs " + fileOf("p4", "text_id,entry ID\n1,2\n"),
         "p4:1: 'text_id' names ids, but line numbers are read"},
        {"sweep -t x", "--entries or --duplicates is required"},
        {"sweep -t x -e x --duplicates", "--entries: has no effect beside --duplicates"},
        {"sweep -t x -e x --all-columns", "--all-columns: has no effect without --pairs"},
        {"sweep -t x -e x --threshold 5 --short-percent 1 --long-percent 1",
         "--percent: has no effect beside"},
        {"match -t x -e x --text-column 1 --entry-delimiter ';'", "without --entry-column"},
        {"sweep -t x -e x -p 80,80", "--percent: 80 is given twice"},
        {"sweep -t x -e x -p 80,,70", "--percent: '80,,70' has a comma without a value"},
        {"sweep -t x -e x -p 80,101", "--percent: '101' is no"},
        {"match -t x -e x --entry-column 1 --entry-delimiter ab", "--entry-delimiter: 'ab' is nei"},
        {"match -t x --text-column 1 --keep , -e x", "--keep: ',' has a comma without a value"},
        {"search x --explain-line 3 -e " + two, "two: there is no line 3"},
        {"match -t - -e /dev/null", "/dev/null contains no entries"},
        {"match -t - --drop-words " + two + " -e " + two,
         "no entries, or none with a word once pre"},
        {"mtch -t x", "there is no command 'mtch'; did you mean match?"},
        {"dup x", "there is no command 'dup'; did you mean duplicates?"},
        {"--verson", "there is no option '--verson'; did you mean --version?"},
        {"match --" + std::string(50'000, 'a'), "there is no option '--aaa"},
        {"match -t x --entrys x", "; did you mean --entries?"},
        {"match -t x -e x --tresh=5", "no option '--tresh'; did you mean --threshold?"},
        {"match -V", "near_text: -V: is for near_text without a command\n"},
        {"--jobs 3 match -t x -e x", "--jobs: goes behind the command, match"},
        {"match -t x -e x --zzz 5", "near_text: there is no option '--zzz'\n"},
        {"match -t x -e x --top 1x",
         "near_text: --top: '1x' is not a whole number from 1 to 2147483647"},
        {"match -t x -e x --top +5", "--top: '+5' is not a whole number from 1 to 2147483647"},
        {"match -t x -e x --jobs 0x10", "--jobs: '0x10' is not a whole number from 1 to 256"},
        {"match -t x -d ';' --entry-column b -e " + fileOf("commas.csv", "a,b\n"),
         "the header has a,b. Is the --entry-delimiter ','?"},
        {"search x -d ';' --entry-column b -e " + fileOf("commas.csv", "a,b\n"),
         "Is the --delimiter ','?"},
        {"match -t x -e x -p", "near_text: --percent: needs a value\n"},
        {"match -t x -e x --best=3", "near_text: --best: takes no value\n"},
        {"match -t x -e x --best=true", "near_text: --best: takes no value\n"},
        {"match -t x --text-column 1 --keep 1 -e x", "these do: tsv, csv, json"},
        {"search ' ' --explain-line 1 -e " + two, "TEXT contains no word"},
        {"match -t x -e x -p 1 -p 2", "near_text: --percent: is given twice"},
        {"match -t x -e x --encoding ''", "--encoding: is given without a value"},
        {"match --texts= --entries=x", "--texts: is given without a value"},
        {"--locale= match -t x -e x", "--locale: is given without a value"},
        {"compare a b --percent= 50", "--percent: is given without a value"},
        {"match -t x -e x --exclude= --zzz", "no option '--zzz'"},
        {"match -t x -e x --best=", "--best: takes no value"},
        {"match -t x -e \"$(printf 'a\\nb')\"", "a\\x0Ab: No such file"},
        {"help gibberish", "there is no command 'gibberish'; near_text --help lists them"},
        {"search red", "--entries or --dictionary"},
        {"search red --entries /none", "/none: No such file"},
        {"search red --entries - --exclusions -", "read once"}};
    for (auto const& [arguments, part] : failures) {
        Outcome const outcome = run(arguments);
        expectFailure(part, outcome);
        EXPECT_EQ(outcome.output, "") << arguments;
    }
}

TEST(Program, NotesTablesThatAreReadAsLines) {
    std::string const lines = fileOf("lines", "hammer, claw\n");
    std::string const table = fileOf("table", "id;name\n1;claw hammer\n");
    std::string const named = fileOf("named.csv", "id,name\n1,claw hammer\n");
    std::string const input = "1;a\n2;b\n3;c\n";
    std::string const rows = fileOf("rows", input);
    struct Case {
        std::string arguments, note;
    } const cases[] = {
        {"match -t " + named + " --text-column name -e " + table, "table seems to be a table"},
        {"sweep -t " + lines + " -e " + named, "named.csv seems to be a table"},
        {"match -t " + table + " -e " + named + " --entry-column name", "--text-column COLUMN"},
        {"duplicates " + named, "--text-column COLUMN"},
        {"search x -e " + named, "--entry-column COLUMN"},
        {"search x -e " + fileOf("NAMED.CSV", "a,b\n"), "NAMED.CSV seems to be a table"},
        {"search x --entry-column 2 -e " + fileOf("NAMED.TSV", "a,b\tx\n"), ""},
        {"match -t " + lines + " -e " + named + " --entry-column name", ""},
        {"match -t " + table + " -e " + table, ""},
        {"match -t /dev/null -e " + lines, "/dev/null contains no text"},
        {"match --part -t /dev/null -e " + lines, ""},
        {"sweep -t " + fileOf("heading.csv", "a,b\n") + " --text-column b -e " + lines,
         "heading.csv contains no text"},
        {"search '!!!' --prepare -e " + lines, "TEXT contains no word"},
        {"match -f html --text-id id --text-column n -e " + lines + " -t " +
             fileOf("ids.csv", "id,n\n1,a\n1,b\n,c\n"),
         "ids.csv:3: the id is empty or was there before (2 in all)"},
        {"match -f html --entry-id 1 --entry-column 2 -t " + lines + " -e " +
             fileOf("ids2.csv", "1,a\n2,b\n,c\n"),
         "ids2.csv:3: the id is empty or was there before (1 in all)"},
        {"match -e " + lines + " -t -", "input seems to be a table"},
        {"duplicates " + fileOf("rows2", "a,b,c\n\n\"d\",\"e, f\",\nr,,t\n"), "rows2 seems to be"},
        {"duplicates " + fileOf("rows3", "a\tb\nc\t\n\td\n"), "rows3 seems to be a table"},
        {"match -t " + lines + " -e " + lines + " --exclusions " + rows, "of words alone"},
        {"match -t " + lines + " -e " + lines + " --drop-words " + rows, "of words alone"},
        {"duplicates " + fileOf("decimals", "nut 1,5\nbolt 2,5\nsaw 3,5\n"), ""},
        {"duplicates " + fileOf("commas", "a,b,c\nd,e\nf,g,h\n"), ""},
        {"duplicates " + fileOf("blanks", "a, b, c\nd; e\nf, g, h\n"), ""},
        {"match -t " + lines + " -e " + lines + " --exclusions " + named, ""}};
    for (auto const& [arguments, note] : cases) {
        std::string const errors = run(arguments + " -p 0", input).errors;
        EXPECT_EQ(errors.empty(), note.empty()) << arguments;
        EXPECT_NE(errors.find(note), std::string::npos) << arguments << '\n' << errors;
    }
}

// What one text finds at 0 percent: every entry, as index, line and entry.
TEST(Program, MapsIndicesToLines) {
    std::string units = "\u0080\u2028\uE000\uFFFD\uFFFE\U0001F600";  // that might join the lines
    for (char c = 1; c < '\\'; ++c)
        units += std::string("\t\n\r").find(c) == std::string::npos ? c : ' ';
    std::pair<std::string, std::string> const cases[] = {
        {"\n \nc\n\ne\n\n", "0:3:c 1:5:e "},
        {"a\r\n\r\nc\r\n\t\r\ne", "0:1:a 1:3:c 2:5:e "},
        {"\xEF\xBB\xBF\nb\n", "0:2:b "},
        {"a\n" + units + "\nc", "0:1:a 1:2:" + units + " 2:3:c "}};
    for (auto const& [content, matches] : cases) {
        Outcome const found =
            run("match --texts - --format json --percent 0 --entries " + fileOf("entries", content),
                "x");
        std::string shown;
        auto const object = nlohmann::json::parse(found.output);
        for (auto const& match : object["matches"]) {
            shown += match["index"].dump() + ':' + match["entry_line"].dump() + ':' +
                     match["entry"].get<std::string>() + ' ';
        }
        EXPECT_EQ(shown, matches);
        EXPECT_EQ(found.status, 0);
    }
}

TEST(Program, NamesTheLineThatIsNoText) {
    std::string const good = fileOf("good", "a\n");
    for (std::string const& content : {"a\nb\xC3(\n"s, "a\nb\0c\n"s, "a\nb\xED\xA0\x80"s}) {
        std::string const bad = fileOf("bad", content);
        for (std::string const& arguments :
             {"search a --entries " + bad, "search a --entries " + good + " --exclusions " + bad,
              "match --texts " + good + " --entries " + bad,
              "match --strict --texts " + bad + " --entries " + good})
            expectFailure(bad + ":2: ", run(arguments));
    }
    std::string const list = fileOf("bad", "a;\nb\xFF");
    expectFailure(list + ":2: ", run("search a --separator ';' --dictionary " + list));
}

TEST(Program, ReadsEveryFileInTheEncoding) {
    near_text::Encoder encoder("utf-16le");
    std::string const list = fileOf("list", encoder.encoded("red;я ball\n"));
    std::string const words = fileOf("words", encoder.encoded("я\n"));
    std::string const pairs = fileOf("pairs", encoder.encoded("1\t1\n"));
    std::string const in = " -p 100 --encoding utf-16le ";
    EXPECT_EQ(run("search ball --indices --separator ';' --dictionary " + list + " --exclusions " +
                  words + in)
                  .output,
              "1\n");
    EXPECT_NE(run("sweep -f json -t " + words + " -e " + words + " --pairs " + pairs + in)
                  .output.find(R"("found":1)"),
              std::string::npos);
}

TEST(Program, ExplainsMatchesAndMisses) {
    std::string const search = "search 'red ball' --percent 75 --exclude ltd --entries " +
                               fileOf("entries", "blue cup\n\nred big ball ltd\n");
    std::string const match =
        " 85%   3 of 4   line 3      index 1      red big ball ltd\n"
        "    words cancelled   red ball\n"
        "    words excluded    ltd\n"
        "    left of text      \"\"\n"
        "    left of entry     \"big\"\n"
        "    limit             4 (what 75 percent leaves of 17 units)\n"
        "    distance          3 (alike)\n"
        "    alike up to       85 percent\n";
    EXPECT_EQ(run(search + " --explain").output, match);
    EXPECT_EQ(run(search + " --explain-line 3").output, match);
    EXPECT_NE(run(search + " --explain-line 1").output.find("7 (different)"), std::string::npos);
    EXPECT_NE(run(search + " --explain-line 2").errors.find("note: line 2 contains no word"),
              std::string::npos);
    EXPECT_EQ(run(search + " --explain-line 4").status, 2);
}

// (dim| =bold| [deleted| {inserted| <replaced|, whatever the texts bring along.
TEST(Colours, MarkHowTextsDiffer) {
    std::pair<std::string, std::string> const shownAs[] = {
        {"2", "("}, {"1", "="}, {"1;4;31", "["}, {"1;4;32", "{"}, {"1;7;35", "<"}, {"", "|"}};
    auto const marked = [&](std::string const& arguments) {
        std::string text = run(arguments + " --color always").output;
        for (auto const& [sequence, shown] : shownAs)
            text = std::regex_replace(text, std::regex("\x1B\\[" + sequence + 'm'), shown);
        return text;
    };
    std::string const lists = " -t " + fileOf("t", "red\x1B[8m a\u202Ebc\nno\u009B\n") + " -e " +
                              fileOf("e", "axbde red\x1B[8m\nred\x1B[8m abc\n");
    EXPECT_EQ(marked("match -p 50" + lists),
              "1  (red [8m |=a|[ |=bc|\n"
              "     95%   1 of 6   line 2      index 1      (red [8m |=abc|\n"
              "     80%   3 of 7   line 1      index 0      =a|<x|=b|{d|<e|( red [8m|\n"
              "2  no \n       -\n");
    std::string const explained = marked("compare 'a b acd' 'b a axde' -p 50 --explain");
    for (auto const part : {"   (a b|\n", "\"=a|<c|=d|\"\n", "\"=a|<x|=d|{e|\"\n"})
        EXPECT_NE(explained.find(part), std::string::npos) << explained;
}

// Without the marks, each closed on its line, the output is what it is without colours.
TEST(Colours, AddNothingElse) {
    std::string const samples = NEAR_TEXT_SAMPLES "/";
    std::string const hostile = "\x1B[8m \u202Eaxe\u0085\t axe\x1B\n";
    std::string const texts = fileOf("t", hostile + contentOf(samples + "supplier.txt"));
    std::string const entries = fileOf("e", hostile + contentOf(samples + "catalogue.txt"));
    std::regex const mark("\x1B\\[[0-9;]+m([^\x1B\n]*)\x1B\\[m");
    for (std::string const& arguments :
         {"match -p 60 -P -t " + texts + " -e " + entries, "duplicates -p 80 -P " + entries,
          "search 'claw axe\x1B' -p 40 --explain --explain-line 7 -e " + entries,
          "search 'claw hamer\x1B' -p 40 -e " + entries,
          "compare 'a\x1B[8m b' 'b \x1B[9mc' -p 1 --explain"s}) {
        std::string const coloured = run(arguments + " --color always").output;
        EXPECT_NE(coloured.find('\x1B'), std::string::npos) << arguments;
        EXPECT_EQ(std::regex_replace(coloured, mark, "$1"), run(arguments).output) << arguments;
    }
}

TEST(Colours, AreForATerminal) {
    std::string const compare = NEAR_TEXT_PROGRAM " compare a b -p 0 --explain";
    std::pair<std::string, bool> const cases[] = {
        {compare, true},
        {"NO_COLOR= " + compare, true},
        {"NO_COLOR=0 " + compare, false},
        {"TERM=dumb " + compare, false},
        {compare + " --color never", false},
        {"TERM=dumb NO_COLOR=1 " + compare + " --color always", true},
        {compare + " | cat", false}};
    for (auto const& [command, isColoured] : cases) {
        std::string const output =
            shell("script -qec 'env -u NO_COLOR TERM=xterm " + command + "' /dev/null </dev/null")
                .output;
        EXPECT_NE(output.find("alike"), std::string::npos) << command;
        EXPECT_EQ(output.find('\x1B') != std::string::npos, isColoured) << command;
    }
}

// The single searches are the add-in's own.
TEST(Program, MatchesInOrderAsSingleSearchesDo) {
    using near_text::toUnits;
    std::string const samples = NEAR_TEXT_SAMPLES "/";
    std::string const input = contentOf(samples + "supplier.txt");
    std::string const command =
        "match --texts - --short-percent 70 --threshold 40 --long-percent 60 --entries " + samples +
        "catalogue.txt --exclusions " + samples + "exclusions.txt --format json --jobs ";
    Lines const lines = linesOf(run(command + '4', input).output);
    EXPECT_EQ(lines, linesOf(run(command + '1', input).output));

    std::u16string dictionary = toUnits(contentOf(samples + "catalogue.txt"));
    std::replace(dictionary.begin(), dictionary.end(), u'\n', u'\1');
    std::u16string const exclusions = toUnits(contentOf(samples + "exclusions.txt"));
    Component component(addIn());
    Lines const texts = linesOf(input);
    ASSERT_EQ(lines.size(), texts.size());
    std::size_t matches = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        auto const line = nlohmann::json::parse(lines[i]);
        EXPECT_EQ(line["line"], i + 1);
        EXPECT_EQ(line["text"], texts[i]);
        std::string indices;
        for (auto const& match : line["matches"])
            indices += (indices.empty() ? "" : ",") + match["index"].dump();
        std::u16string const text = toUnits(texts[i]);
        EXPECT_EQ(component.search({text, dictionary, u'\1', 40, 70, 60, exclusions}), indices);
        matches += line["matches"].size();
    }
    EXPECT_GT(matches, 20u);
}

// The index of the entries is for speed alone.
TEST(Program, PrintsTheSameWithoutAnIndex) {
    std::string const samples = NEAR_TEXT_SAMPLES "/";
    std::string const lists =
        " --texts " + samples + "supplier.txt --entries " + samples + "catalogue.txt";
    for (std::string const& arguments :
         {"match --percent 60 --best" + lists, "match --percent 85 --top 3" + lists,
          "match --percent 75 --prepare" + lists, "sweep" + lists,
          "duplicates --percent 70 --exclude ltd " + samples + "catalogue.txt"}) {
        Outcome const with =
            run(arguments + " --jobs 3 --exclusions " + samples + "exclusions.txt");
        Outcome const without =
            run(arguments + " --no-index --exclusions " + samples + "exclusions.txt");
        EXPECT_EQ(with.output, without.output) << arguments;
        EXPECT_GT(with.output.size(), 500U) << arguments;
    }
}

// Parts of a stream, each by a program of its own, give the whole's lines; a line that fails gives
// a line too.
TEST(Program, WritesALineForALine) {
    std::string const match = "match --texts - --part --entries " +
                              fileOf("entries", "a\\b\tc \"d\"\n") + " --percent 0 --format ";
    std::string const part1 = "\"x\\\ty\n\n";
    std::string part2 = "\xFF\nx";
    for (int i = 0; i < 100000; ++i)
        part2 += "я";  // two bytes each, from an odd place on
    part2 += "\nz";
    std::string const tooLong =
        "String length must be no longer 1000 characters (this has more than 5000)";
    std::string const notUtf8 = "not valid UTF-8 at byte 1";
    std::string const numbers = R"("percent":27,"distance":7,"limit":9}]})";
    std::pair<std::string, Lines> const cases[] = {
        {"tsv",
         {R"(	"x\\\ty	27	7	9	0	1	a\\b\tc "d"	)",
          "\t\t\t\t\t\t\t\t", "\t\t\t\t\t\t\t\t" + notUtf8, "\t\t\t\t\t\t\t\t" + tooLong,
          R"(	z	27	7	9	0	1	a\\b\tc "d"	)"}},
        {"csv",
         {R"(,"""x\	y",27,7,9,0,1,"a\b	c ""d""",)", ",,,,,,,,", ",,,,,,,," + notUtf8,
          ",,,,,,,," + tooLong, R"(,z,27,7,9,0,1,"a\b	c ""d""",)"}},
        {"text",
         {R"("x\ y)", R"(     27%   7 of 9   line 1      index 0      a\b c "d")", "", "       -",
          "error: " + notUtf8, "error: " + tooLong, "z",
          R"(     27%   7 of 9   line 1      index 0      a\b c "d")"}},
        {"json",
         {R"({"text":"\"x\\\ty","matches":[{"index":0,"entry_line":1,"entry":"a\\b\tc \"d\"",)" +
              numbers,
          R"({"text":"","matches":[]})", R"({"error":")" + notUtf8 + "\"}",
          R"({"error":")" + tooLong + "\"}",
          R"({"text":"z","matches":[{"index":0,"entry_line":1,"entry":"a\\b\tc \"d\"",)" +
              numbers}},
    };
    for (auto const& [format, lines] : cases) {
        Outcome const whole = run(match + format, part1 + part2);
        EXPECT_EQ(linesOf(whole.output), lines);
        EXPECT_EQ(whole.status, 0);
        EXPECT_NE(whole.errors.find("2 of 5 lines failed"), std::string::npos);
        EXPECT_EQ(run(match + format, part1).output + run(match + format, part2).output,
                  whole.output);
        Outcome const strict = run(match + format + " --strict", part1 + part2);
        EXPECT_EQ(linesOf(strict.output), linesOf(run(match + format, part1).output));
        EXPECT_EQ(strict.status, 2);
    }
}

// Out of a spreadsheet and back into it.
TEST(Program, CarriesColumnsFromTableToTable) {
    std::string const texts = fileOf("texts.csv",
                                     "id;\xCD\xE0\xE7\xE2\xE0\xED\xE8\xE5;line\r\n"
                                     "7;\"\xCC\xCE\xCB\xCE\xD2\xCE\xCA \"\"1\"\";\nbig\";x\r\n"
                                     "8;\"a;b\";\r\n9\r\n");
    std::string const entries = fileOf("entries.csv", "A1\tбольшой молоток \"1\" big\n");
    std::string const command = "match -t " + texts + " -e " + entries +
                                " --text-column Название --entry-column 2 --keep id,line "
                                "--keep-entry 1 -d ';' -P -p 50 --encoding windows-1251 "
                                "--entry-encoding utf-8 --entry-delimiter tab -f ";
    Outcome const back = run(command + "csv --output-encoding cp1251");
    EXPECT_EQ(
        back.output,
        "line;text;percent;distance;limit;index;entry_line;entry;error;id;text_line;entry_1\n"
        "2;\"\xCC\xCE\xCB\xCE\xD2\xCE\xCA \"\"1\"\";\nbig\";71;7;12;0;1;\"\xE1\xEE\xEB\xFC\xF8"
        "\xEE\xE9 \xEC\xEE\xEB\xEE\xF2\xEE\xEA \"\"1\"\" big\";;7;x;A1\n"
        "4;\"a;b\";;;;;;;;8;;\n"
        "5;;;;;;;;has 1 field, but column 3 is asked for;9;;\n");
    EXPECT_EQ(back.status, 2);
    auto const object = nlohmann::json::parse(linesOf(run(command + "json").output)[0]);
    EXPECT_EQ(object["kept"]["id"], "7");
    EXPECT_EQ(object["matches"][0]["kept"]["entry_1"], "A1");
}

// What the output's encoding lacks fails the row that holds it, in the error's place and on
// standard error.
TEST(Program, FailsTheRowsThatItCannotEncode) {
    std::string const table = fileOf("table.csv", "1,x,a\n2,я,b\n☺,я,c\n4,☺,d\n5,x,e\n");
    std::string const to = " --keep 1,3 -f csv --output-encoding cp1251 -p 100 ";
    Outcome const matched = run("match --part --text-column 2 -t " + table +
                                " --entry-column 2 --best -e " + table + to);
    EXPECT_EQ(matched.output,
              ",x,100,0,0,0,1,x,,1,a\n,x,100,0,0,4,5,x,,1,a\n"
              ",\xFF,100,0,0,1,2,\xFF,,2,b\n,\xFF,100,0,0,2,3,\xFF,,2,b\n"
              ",,,,,,,,cp1251 has no U+263A,,c\n,,,,,,,,cp1251 has no U+263A,4,d\n"
              ",x,100,0,0,0,1,x,,5,e\n,x,100,0,0,4,5,x,,5,e\n");
    EXPECT_NE(matched.errors.find("table.csv:4: cp1251 has no U+263A"), std::string::npos);
    Outcome const grouped = run("duplicates -g --text-column 2 " + table + to);
    EXPECT_EQ(grouped.output,
              "group,line,text,text_1,text_3\n1,1,x,1,a\n1,5,x,5,e\n2,2,\xFF,2,b\n2,3,\xFF,,c\n");
    expectFailure("table.csv:3: cp1251 has no U+263A", grouped);
}

TEST(Program, PrintsWhatIsWanted) {
    auto const match = [&](std::string const& options) {
        return run("match -t - -p 60 -f tsv --part -e " +
                       fileOf("entries", "red bull\nred ball\nred bell\nblue cup\n") + options,
                   "red ball\nnothing\n")
            .output;
    };
    std::string const bull = "\tred ball\t93\t1\t3\t0\t1\tred bull\t\n";
    std::string const ball = "\tred ball\t100\t0\t4\t1\t2\tred ball\t\n";
    std::string const bell = "\tred ball\t94\t1\t4\t2\t3\tred bell\t\n";
    std::string const none = "\tnothing\t\t\t\t\t\t\t\n";
    EXPECT_EQ(match(""), bull + ball + bell + none);
    EXPECT_EQ(match(" --best"), ball + none);
    EXPECT_EQ(match(" --top 2"), ball + bell + none);
    EXPECT_EQ(match(" --unmatched"), none);
    EXPECT_EQ(match(" --threshold 8 --short-percent 100"), ball + bell + none);
}

// Every list begins with the separator there, and either may be the text.
TEST(Program, FindsThePairsOfAList) {
    using near_text::toUnits;
    Lines entries = linesOf(contentOf(NEAR_TEXT_SAMPLES "/catalogue.txt"));
    std::erase_if(entries,
                  [](std::string const& entry) { return !reference::holdsWord(toUnits(entry)); });
    entries.resize(80);
    entries.push_back(std::string(1001, 'x'));  // may be found, but finds none
    entries.push_back(std::string(1000, 'x'));
    std::string content;
    std::u16string dictionary;
    for (std::string const& entry : entries) {
        content += entry + '\n';
        dictionary += u'\1' + toUnits(entry);
    }
    std::string const file = fileOf("list", content);
    Component component(addIn());
    for (int const percent : {50, 84}) {
        std::set<std::pair<std::size_t, std::size_t>> expected, pairs;  // the lesser line first
        for (std::size_t i = 0; i < entries.size(); ++i) {
            auto const found = component.search(
                {toUnits(entries[i]), dictionary, u'\1', 20, percent, percent - 9, u""});
            for (std::size_t const j : host_client::parseIndexList(found.value_or(""))) {
                if (i != j) expected.emplace(std::min(i, j) + 1, std::max(i, j) + 1);
            }
        }
        Outcome const outcome =
            run("duplicates -f json --threshold 20 --long-percent " + std::to_string(percent - 9) +
                " -p " + std::to_string(percent) + ' ' + file);
        expectFailure("list:81: String length", outcome);
        std::size_t count = 0;
        for (std::string const& row : linesOf(outcome.output)) {
            auto const object = nlohmann::json::parse(row);
            if (!object.contains("matches")) continue;
            for (auto const& match : object["matches"]) {
                std::size_t const line1 = object["line"], line2 = match["entry_line"];
                pairs.emplace(std::min(line1, line2), std::max(line1, line2));
                ++count;
            }
        }
        EXPECT_EQ(pairs, expected);
        EXPECT_EQ(pairs.size(), count);
    }
    Outcome const groups = run("duplicates -g -P -f csv -", "Ab\nx\nab!\n\nX\nzz\n");
    EXPECT_EQ(groups.output, "group,line,text\n1,1,Ab\n1,3,ab!\n2,2,x\n2,5,X\n");
    EXPECT_EQ(run("duplicates -g -f csv -", "a\n").output, "group,line,text\n");
    std::string equal;
    for (int i = 0; i < 101; ++i)
        equal += "red\n";
    EXPECT_EQ(run("duplicates -", equal).errors,
              "near_text: note: 1 line with 100 pairs or more; --groups prints every line once\n");
    EXPECT_EQ(run("duplicates -g -", equal).errors + run("duplicates -f html -", equal).errors, "");
    // Only behind a separator is the first line long enough to be found.
    EXPECT_EQ(run("duplicates -p 85 -g -f csv -", "jaw\naw\n").output,
              "group,line,text\n1,1,jaw\n1,2,aw\n");
    // What the user says counts for more than the name, and no two columns have one name.
    std::string const table = fileOf("kept.tsv", "group;t;index\nx;a;1\ny;a;2\n");
    EXPECT_EQ(run("duplicates -g -f tsv -d ';' --text-column t --keep group,index " + table).output,
              "group\tline\ttext\ttext_group\tindex\n1\t2\ta\tx\t1\n1\t3\ta\ty\t2\n");
}

TEST(Program, SweepsOverPairsThatAreNamedByIds) {
    // Among ids numbers are no line numbers; a text may have several entries, and a pair stand
    // twice.
    std::string const ids = " -t " + fileOf("t.csv", "id,n\n7,red ball\n1,blue cup\n") +
                            " --text-column n --text-id id -e " +
                            fileOf("e.csv", "name;code\nball red;7\ncup;2\nblue cup;x\n") +
                            " --entry-column name --entry-id code --entry-delimiter ';' -p 90 ";
    auto const withPairs = [&](std::string const& pairs) {
        return "sweep -f csv --all-columns" + ids + "--pairs " + fileOf("known", pairs);
    };
    Outcome const byIds = run(withPairs("id,code id\n7,7\n1,x\n1,2\n7,7\n"));
    EXPECT_EQ(linesOf(byIds.output).at(1), "all,90,0,2,0,2,2,0,3,2,2,1.000,0.667,0.800,yes")
        << byIds.errors;
    expectFailure("known:2: there is no entry with the id '3'", run(withPairs("7,7\n1,3\n")));
    expectFailure("known:1: there is no text with the id '2'", run(withPairs("2,7\n7,x\n")));
    expectFailure("known:2: an id is empty", run(withPairs("7,7\n,2\n")));
    expectFailure("--text-id: has no effect without --pairs", run("sweep" + ids));
    std::string const within = "sweep -f csv -p 60 --duplicates -t " +
                               fileOf("l.csv", "id,n\nb,cup red\n,x\na,red cup\n") +
                               " --text-column n --text-id id --pairs ";
    EXPECT_EQ(run(within + fileOf("p", "a,b\nb,a\n")).output,
              "kept,percent,matches,found,precision,recall,f1,highest\n"
              "all,60,1,1,1.000,1.000,1.000,yes\n");
    expectFailure("p:1: an entry is no pair with itself", run(within + fileOf("p", "a,a\n")));
    expectFailure("p:1: an id is empty", run(within + fileOf("p", "a,\n")));

    fileOf("l.csv", "id,n\nb,x\nb,y\na,z\n");
    std::string const twice = fileOf("p", "a,b\nb,a\n");
    EXPECT_EQ(run(within + twice).errors,
              "near_text: note: " + twice + ":1: 2 entries have the id 'b'\n");

    std::string const text = fileOf("text", "x\n");
    // Of no matches none is right, and none is wrong.
    std::string const none =
        " -p 90 -t " + text + " -e " + fileOf("e", "yz\n") + " --pairs " + fileOf("p", "1,1\n");
    for (auto const& [format, row] :
         {std::pair("csv", "all,90,0,0,,0.000,0.000,\n"),
          {"text", "all          90        0      0          -   0.000  0.000\n"},
          {"json", R"("precision":null,"recall":0.000,"f1":0.000,)"}})
        EXPECT_NE(run("sweep -f "s + format + none).output.find(row), std::string::npos) << format;
    expectFailure("pairs:1: there is no text in line 2",
                  run("sweep -t " + text + " -e " + text + " --pairs " + fileOf("pairs", "2;1\n")));
}

TEST(Program, NoticesClosedStreams) {
    std::string const match =
        NEAR_TEXT_PROGRAM " match -p 50 -e " NEAR_TEXT_SAMPLES "/catalogue.txt -t ";
    expectFailure("standard output is closed",
                  shell(match + NEAR_TEXT_SAMPLES "/supplier.txt >&-"));
    expectFailure("standard input is closed", shell(match + "- <&-"));
}

TEST(Program, WaitsForAPipeThatWouldBlock) {
    std::string const command =
        "duplicates -p 40 -f json --no-index " NEAR_TEXT_SAMPLES "/catalogue.txt";
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    fcntl(ends[1], F_SETFL, O_NONBLOCK);
    std::thread program([&] {
        shell(NEAR_TEXT_PROGRAM " " + command + " >&" + std::to_string(ends[1]));
        close(ends[1]);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));  // more than fits is there by then
    std::string output(1 << 24, '\0');
    std::size_t size = 0;
    for (ssize_t count = 0; (count = read(ends[0], &output[size], output.size() - size)) > 0;)
        size += static_cast<std::size_t>(count);
    program.join();
    close(ends[0]);
    EXPECT_EQ(output.substr(0, size), run(command).output);
    EXPECT_GT(size, 1U << 17);
}

TEST(Program, AnswersEachLineBeforeTheNextComes) {
    std::string const pipe = fileOf("entries", "red ball\n") + ".pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRWXU), 0);
    RunningMatch const match("--texts - --entries " + fileOf("entries", "red ball\n") + " <" +
                             pipe);
    std::ofstream texts(pipe);
    texts << "ball red\n" << std::flush;
    EXPECT_TRUE(match.line().starts_with("line\ttext\t"));
    EXPECT_EQ(match.line(), "1\tball red\t100\t0\t2\t0\t1\tred ball\t\n");
    texts << "blue\nred" << std::flush;
    EXPECT_EQ(match.line(), "2\tblue\t\t\t\t\t\t\t\n");
    EXPECT_EQ(match.interrupt(SIGTERM), std::pair(""s, 128 + SIGTERM));
}

TEST(Program, LeavesWholeLinesWhenInterrupted) {
    std::string texts, all;
    for (int i = 1; i <= 100000; ++i) {
        texts += "text\n";
        all += std::to_string(i) + "\ttext\t\t\t\t\t\t\t\n";
    }
    RunningMatch const match("--jobs 3 --texts " + fileOf("texts", texts) + " --entries " +
                             NEAR_TEXT_SAMPLES "/catalogue.txt");
    match.line();  // the heading
    std::string first;
    for (int i = 0; i < 50; ++i)
        first += match.line();
    auto const [rest, status] = match.interrupt(SIGINT);
    EXPECT_EQ(status, 128 + SIGINT);
    EXPECT_LT(rest.size(), all.size() / 2);
    // It may have been done with just the lines that were read, and then writes no more.
    EXPECT_TRUE((first + rest).ends_with('\n'));
    EXPECT_TRUE(all.starts_with(first + rest));
}

TEST(Program, NoticesThatItCannotWrite) {
    std::string const entries = NEAR_TEXT_SAMPLES "/catalogue.txt";
    for (std::string const& arguments : {"--help"s, "describe"s, "compare a a --percent 1"s,
                                         "search a --percent 0 --entries " + entries,
                                         "match --texts " + entries + " --entries " + entries}) {
        expectFailure("cannot write", run(arguments, {}, "/dev/full"));
    }
}

// The first line takes long, and by the time that it is done those behind the second, which fails,
// are done too.
TEST(Program, WritesNothingBehindTheFirstFailureIfStrict) {
    std::string entries, text;
    for (int i = 0; i < 20000; ++i)
        entries += "an entry that takes a while to compare " + std::to_string(i) + '\n';
    for (int i = 0; i < 100; ++i)
        text += "word" + std::to_string(i) + ' ';
    std::string const longest(2000, 'x');  // refused at once
    Outcome const outcome =
        run("match --strict --jobs 4 --percent 99 --format json --texts - --entries " +
                fileOf("entries", entries),
            text + "\n\xFF\n" + longest + '\n' + longest + '\n');
    expectFailure(":2: not valid UTF-8", outcome);
    EXPECT_EQ(linesOf(outcome.output).size(), 1U) << outcome.output;
}

// However many workers there might be for one line.
TEST(Program, StaysSmallOverAnEndlessLine) {
    std::string const output = fileOf("out", {});
    std::string const command =
        "head -c 300000000 /dev/zero | tr '\\0' x | " NEAR_TEXT_PROGRAM
        " match --format json --jobs 256 --texts - --entries " NEAR_TEXT_SAMPLES
        "/catalogue.txt >" +
        output + " 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2);
    EXPECT_NE(contentOf(output).find("no longer 1000 characters"), std::string::npos);
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    EXPECT_LT(usage.ru_maxrss, 200000);  // in KiB
}

TEST(Program, IsSilentWhenNobodyReadsOn) {
    std::string const samples = NEAR_TEXT_SAMPLES "/";
    std::string const status = fileOf("status", {}), errors = fileOf("err", {});
    std::string const program = "(" NEAR_TEXT_PROGRAM " match --texts - --entries " + samples +
                                "catalogue.txt 2>" + errors + "; echo $? >" + status + ")";
    std::string const endless = "while cat " + samples + "supplier.txt; do :; done 2>/dev/null | ";
    ASSERT_EQ(std::system((endless + program + " | head -n 1 >/dev/null").c_str()), 0);
    EXPECT_EQ(contentOf(errors), "");
    EXPECT_EQ(contentOf(status), std::to_string(128 + SIGPIPE) + '\n');
}

// A spreadsheet's table, by itself: what is kept comes out as it was written there.
TEST(Program, CarriesASpreadsheetsTableThrough) {
    using namespace near_text;
    Encoder encoder("windows-1251");
    std::vector<std::vector<std::string>> const rows = {
        {"7", "Молоток; \"тяжёлый\"", "две\nстроки"}, {"№ 8", "Пила", ""}};
    std::string table = encoder.encoded("код;наименование;примечание\r\n");
    for (auto const& row : rows)
        table += encoder.encoded(csvRow(row, ';'));
    std::string const file = fileOf("table", table);
    Outcome const outcome =
        run("match --header --delimiter ';' --encoding windows-1251 --output-encoding windows-1251 "
            "--format csv --prepare --best --text-column наименование --keep код,3 --texts " +
            file + " --entry-column 2 --keep-entry примечание --entries " + file);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    TableReader reader({fileOf("result", outcome.output), "windows-1251"},
                       {.delimiter = ';', .hasHeader = true});
    std::vector<std::string> const columns = {"код", "text", "примечание"};
    for (Row row; auto const& expected : rows) {
        ASSERT_TRUE(reader.next(row));
        for (std::size_t i = 0; i < columns.size(); ++i)
            EXPECT_EQ(row.fields[reader.column(columns[i])], expected[i]);
        EXPECT_EQ(row.fields[reader.column("entry")], expected[1]);
        EXPECT_EQ(row.fields[reader.column("entry_примечание")], expected[2]);
    }
}

}  // namespace
