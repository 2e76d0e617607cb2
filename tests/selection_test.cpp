// Which of a text's matches the program prints, and what is done to texts before they are asked
// about: held against runs that do less.
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

#include "near_text/input/text_codec.h"
#include "near_text/matching/longest_text.h"
#include "reference/whitespace.h"
#include "tests/random_text.h"

namespace {

using Pairs = std::set<std::pair<std::string, std::string>>;  // a text's line and an entry's

struct Ending {
    int status;
    std::string output, errors;
};

Ending endingOf(std::string const& arguments) {
    std::string const output = fileOf("out", {}), errors = fileOf("err", {});
    int const status =
        std::system((NEAR_TEXT_PROGRAM " " + arguments + " >" + output + " 2>" + errors).c_str());
    return {WEXITSTATUS(status), contentOf(output), contentOf(errors)};
}

std::string outputOf(std::string const& arguments) {
    return endingOf(arguments).output;
}

Pairs pairsOf(std::string const& arguments) {
    Pairs pairs;
    std::istringstream rows(outputOf("match -f tsv " + arguments));
    std::string row;
    std::getline(rows, row);  // the heading
    while (std::getline(rows, row)) {
        std::vector<std::string> cells(1);
        for (char const c : row)
            c == '\t' ? cells.emplace_back() : cells.back() += c;
        if (!cells[6].empty()) pairs.emplace(cells[0], cells[6]);
    }
    return pairs;
}

Pairs turned(Pairs const& pairs) {
    Pairs others;
    for (auto const& [text, entry] : pairs)
        others.emplace(entry, text);
    return others;
}

// Lines that share words, some of them equal or blank.
std::string randomLines(RandomText& random, std::size_t count) {
    std::string lines;
    while (count-- > 0) {
        std::u16string line = random.words(random.below(6), u"abcd1", 6, u"");
        std::replace_if(line.begin(), line.end(), reference::isWhitespace, u' ');
        lines += near_text::toUtf8(line) + '\n';
    }
    return lines;
}

Pairs someOf(Pairs pairs, RandomText& random) {
    std::erase_if(pairs, [&](auto const&) { return random.oneIn(3); });
    return pairs;
}

std::string decisionsOn(Pairs const& rejected, std::string const& name) {
    std::string rows = "text_line,entry_line,percent,decision\n";
    for (auto const& [text, entry] : rejected)
        rows += text + ',' + entry + ",9,rejected\n";
    return fileOf(name, rows);
}

TEST(Decisions, LeaveOutAndMarkWhatTheyName) {
    std::string const lists = "-p 50 -t " + fileOf("t.csv", "id,n\n7,red ball\n8,blue cup\n") +
                              " --text-column n -e " + fileOf("e", "red ball\nred bowl\ncup\n");
    auto const with = [&](std::string const& rows, std::string const& more = {}) {
        return endingOf("match -f csv " + lists + more + " --decisions " + fileOf("d.csv", rows));
    };
    std::string const ball = "2,red ball,100,0,4,0,1,red ball,",
                      bowl = "2,red ball,83,2,5,1,2,red bowl,", cup = "3,blue cup,56,4,4,2,3,cup,";
    std::string const heading =
        "line,text,percent,distance,limit,index,entry_line,entry,error,decision\n";
    struct Case {
        std::string rows, more, output;
    } const cases[] = {
        {"2,1\n", "", ball + ",accepted\n" + bowl + ",\n" + cup + ",\n"},
        {"a,b,%,decision\n2,1,100,rejected\n2,2,77,accepted\n", "",
         bowl + ",accepted\n" + cup + ",\n"},
        {"a,b, Decision\n2,1,rejected\n", " --best", bowl + ",\n" + cup + ",\n"},
        // The last word counts, and no word is none.
        {"a,b,decision\n2,1,rejected\n3,3,\n2,1,accepted\n", " --top 1",
         ball + ",accepted\n" + cup + ",\n"},
        {"text_id,b,decision\n7,1,rejected\n", " --text-id id", bowl + ",\n" + cup + ",\n"},
    };
    for (auto const& [rows, more, output] : cases) {
        Ending const ending = with(rows, more);
        EXPECT_EQ(ending.output, heading + output) << rows << ending.errors;
        EXPECT_EQ(ending.status, 0) << ending.errors;
    }
    std::pair<std::string, std::string> const faults[] = {
        {"a,b,decision\n2,1,yes\n", "d.csv:2: 'yes' is neither accepted nor rejected"},
        {"a,b,decision\n2,1\n", "d.csv:2: "},
        {"a,b,verdict\n2,1,rejected\n", "d.csv:1: no column has the heading decision"},
        {"2,1,100,verworfen\n", "d.csv:1: no column has the heading decision"},
        {"entry_line,line,decision\n2,1,rejected\n", "are called 'entry_line' and 'line'"},
        {"a,b,decision\n2,9,rejected\n", "d.csv:2: there is no entry in line 9"},
        {"a,b,decision\n9,1,rejected\n", "d.csv:2: there is no text in line 9"},
        {"text_id,b,decision\n7,1,rejected\n",
         "d.csv:1: 'text_id' names ids, but line numbers are read"},
        {"a,b,decision\n", "d.csv contains no pairs"}};
    for (auto const& [rows, error] : faults) {
        Ending const ending = with(rows);
        EXPECT_NE(ending.errors.find(error), std::string::npos) << error << ending.errors;
        EXPECT_EQ(ending.status, 2);
    }
    EXPECT_EQ(with("2,1\n", " --part").status, 2) << "lines of which part?";
    std::string const missing = "text_id,b,decision\n7,1,rejected\n9,1,rejected\n";
    Case const withIds[] = {
        {missing, "", "d.csv:3: there is no text with the id '9'"},
        {missing, " --part", ""},
        {"line,entry_line,decision\n", "", "d.csv:1: 'line' names lines, but ids are read"}};
    for (auto const& [rows, more, error] : withIds) {
        Ending const ending = with(rows, " --text-id id" + more);
        EXPECT_EQ(ending.status, error.empty() ? 0 : 2);
        EXPECT_NE(ending.errors.find(error), std::string::npos) << ending.errors;
    }
}

// A page tells by its end that nothing is missing.
TEST(Page, IsCompleteWhereItsRunIs) {
    std::string const match = "match -f html -p 50 -e " NEAR_TEXT_SAMPLES "/catalogue.txt -t ";
    std::string const texts = fileOf("texts", "claw hammer\n\xFF\nsaw\n");
    std::string const interrupted =
        "help >/dev/null; (echo claw hammer; sleep 2) | timeout -s INT "
        "--preserve-status 0.5 " NEAR_TEXT_PROGRAM " ";
    std::tuple<std::string, int, int, bool> const cases[] = {
        {match + texts, 2, 3, true},
        {match + texts + " --strict", 2, 1, false},
        {interrupted + match + "-", 130, 1, false}};
    for (auto const& [arguments, status, rows, isComplete] : cases) {
        Ending const ending = endingOf(arguments);
        EXPECT_EQ(ending.status, status) << arguments << ending.errors;
        std::istringstream lines(ending.output.substr(ending.output.find("\n{\"command\"")));
        int count = 0;
        for (std::string line; std::getline(lines, line);)
            count += line.starts_with('[') ? 1 : 0;
        EXPECT_EQ(count, rows) << arguments;
        EXPECT_EQ(ending.output.ends_with("{\"complete\":true}\n</script>\n</body>\n</html>\n"),
                  isComplete);
    }
}

// With enough texts for an index to be asked.
TEST(Mutual, IsWhatTheBestOfBothDirectionsShare) {
    RandomText random(7);
    std::size_t count = 0, left = 0;
    for (int round = 0; round < roundsOf(20); ++round) {
        random.stock.clear();
        // An entry that is too long can be found, but finds nothing.
        std::string const longEntry = round % 4 == 0 ? std::string(1010, 'a') + '\n' : "";
        std::string const longText = round % 4 == 0 ? std::string(990, 'a') + '\n' : "";
        std::string const one = fileOf("one", randomLines(random, 90) + longText);
        std::string const other = fileOf("other", randomLines(random, 70) + longEntry);
        std::string const terms = " --threshold " + std::to_string(random.below(20)) +
                                  " --short-percent " + std::to_string(random.below(101)) +
                                  " --long-percent " + std::to_string(40 + random.below(40)) +
                                  (random.oneIn(2) ? " -x 'a b'" : " --same-numbers");
        std::string decisions, turnedDecisions;
        for (bool const hasDecisions : {false, true}) {
            Pairs const there = pairsOf("--best -t " + one + " -e " + other + terms + decisions);
            Pairs const back =
                turned(pairsOf("--best -t " + other + " -e " + one + terms + turnedDecisions));
            Pairs both;
            std::set_intersection(there.begin(), there.end(), back.begin(), back.end(),
                                  std::inserter(both, both.end()));
            for (std::string const how : {" -j 1", " -j 3", " -j 2 --no-index"}) {
                EXPECT_EQ(pairsOf("--mutual -t " + one + " -e " + other + terms + decisions + how),
                          both)
                    << terms << decisions;
            }
            if (!hasDecisions) count += both.size();
            left += there.size() - both.size();
            // Then without some of them.
            Pairs const rejected = someOf(both, random);
            decisions = " --decisions " + decisionsOn(rejected, "there");
            turnedDecisions = " --decisions " + decisionsOn(turned(rejected), "back");
            if (rejected.empty()) break;
        }
    }
    EXPECT_GT(count, static_cast<std::size_t>(roundsOf(200)));
    EXPECT_GT(left, static_cast<std::size_t>(roundsOf(200)));
}

// The lists of pairs that a sweep counts, by what is kept, at one percentage.
std::map<std::string, Pairs> keptPairs(std::string const& lists) {
    return {{"all", pairsOf(lists)},
            {"best", pairsOf("--best " + lists)},
            {"mutual", pairsOf("--mutual " + lists)}};
}

// Whichever side of the threshold has a percentage that stays.
TEST(Sweep, CountsWhatMatchKeepsAtEachPercentage) {
    RandomText random(8);
    std::size_t marks = 0;
    for (int round = 0; round < roundsOf(6); ++round) {
        random.stock.clear();
        std::string lists = " -t " + fileOf("one", randomLines(random, 60)) + " -e " +
                            fileOf("other", randomLines(random, 60));
        if (round % 3 > 0) {
            lists += " --threshold 9 --" + std::string(round % 3 == 1 ? "short" : "long") +
                     "-percent " + std::to_string(40 + random.below(40));
        }
        if (random.oneIn(2)) lists += " --same-numbers";
        Pairs known;
        for (auto const& pair : pairsOf("--best -p 50" + lists)) {
            if (known.empty() || random.oneIn(2)) known.insert(pair);
        }
        std::string rows;
        for (auto const& [text, entry] : known)
            rows += text + ',' + entry + '\n';
        std::istringstream table(
            outputOf("sweep -f tsv -p 45,60,75 --pairs " + fileOf("known.csv", rows) + lists));
        std::getline(table, rows);
        std::map<std::string, std::pair<double, bool>> highest;  // of what the others leave to mark
        for (std::string kept, percent, precision, recall, shown, mark; table >> kept >> percent;) {
            std::size_t matches = 0, found = 0;
            table >> matches >> found >> precision >> recall >> shown;
            std::getline(table, mark);
            Pairs const pairs = keptPairs("-p " + percent + lists)[kept];
            auto const right = std::count_if(pairs.begin(), pairs.end(), [&](auto const& pair) {
                return known.count(pair) > 0;
            });
            EXPECT_EQ(matches, pairs.size()) << kept << " at " << percent << lists;
            EXPECT_EQ(found, static_cast<std::size_t>(right)) << kept << " at " << percent << lists;
            double const f1 =
                2.0 * static_cast<double>(right) / static_cast<double>(pairs.size() + known.size());
            EXPECT_NEAR(std::stod(shown), f1, 0.0006);
            auto& [best, isMarked] = highest[kept];
            if (f1 > best) isMarked = false;
            best = std::max(best, f1);
            if (f1 == best && mark == "\tyes") isMarked = true;
        }
        ASSERT_EQ(highest.size(), 3U);
        for (auto const& [kept, best] : highest)
            marks += best.second ? 1 : 0;
    }
    EXPECT_EQ(marks, static_cast<std::size_t>(3 * roundsOf(6)));
}

TEST(Sweep, CountsDuplicatesAtEachPercentage) {
    std::string const list = NEAR_TEXT_SAMPLES "/catalogue.txt --prepare ";
    for (std::string const terms : {"", " --same-numbers", " --threshold 20 --short-percent 90"}) {
        std::istringstream table(
            outputOf("sweep -f tsv -p 60,70,90 --duplicates -t " + list + terms));
        std::string row;
        std::getline(table, row);
        for (std::string percent, matches; table >> percent >> matches;) {
            std::string const pairs =
                outputOf("duplicates -f tsv -p " + percent + ' ' + list + terms);
            EXPECT_EQ(matches, std::to_string(std::count(pairs.begin(), pairs.end(), '\n') - 1));
            row = percent;
        }
        EXPECT_EQ(row, "60");
    }
}

// Those that fail are told in their places; too long a text would be the nearest to the entry.
TEST(Mutual, LeavesOutTextsThatFail) {
    std::string const a(960, 'a');
    std::string const texts =
        fileOf("texts", "\xFF\n" + a + std::string(41, 'a') + "\n" + a + "\n\nb\n");
    std::string const arguments = "match --mutual -p 60 -f json -e " +
                                  fileOf("entries", a + std::string(40, 'a') + "\n") + " -t - <" +
                                  texts;
    Ending const ending = endingOf(arguments);
    EXPECT_EQ(ending.status, 2);
    EXPECT_NE(ending.errors.find("2 of 5 lines failed"), std::string::npos);
    EXPECT_NE(ending.output.find(R"({"line":1,"error":"not valid UTF-8 at byte 1"})"),
              std::string::npos);
    EXPECT_NE(ending.output.find(R"(aaa","percent":96,)"), std::string::npos) << ending.output;
    std::string const unmatched = outputOf(arguments + " --unmatched");
    EXPECT_EQ(std::count(unmatched.begin(), unmatched.end(), '\n'), 4);
    EXPECT_EQ(endingOf("match --mutual --best -t x -e x").errors,
              "near_text: --mutual: keeps the best of both sides, so --best and --top have no "
              "effect\n");
    EXPECT_EQ(endingOf("match --mutual -t /dev/null -e " NEAR_TEXT_SAMPLES "/catalogue.txt").status,
              1);
}

// A match that is left out makes room for the next one, however near it is.
TEST(SameNumbers, AreLookedAtBeforeTheBestIsChosen) {
    std::string const list = fileOf("list", "pipe 13 mm\npipe 17 mm\nsteel pipe\n");
    std::string const at = " -p 40 --same-numbers ";
    for (std::string const how : {"--best", "--top 1", "--mutual"})
        EXPECT_EQ(pairsOf(how + at + "-e " + list + " -t " + fileOf("text", "pipe 15 mm\n")),
                  Pairs({{"1", "3"}}))
            << how;
    EXPECT_EQ(outputOf("search 'pipe 15 mm' -f tsv --top 2" + at + "-e " + list),
              outputOf("search 'pipe 15 mm' -f tsv --top 1" + at + "-e " + list));
    EXPECT_EQ(outputOf("duplicates -g -f csv" + at + list),
              "group,line,text\n1,1,pipe 13 mm\n1,2,pipe 17 mm\n1,3,steel pipe\n");
    std::string const pairs = outputOf("duplicates -f csv" + at + list);
    EXPECT_EQ(std::count(pairs.begin(), pairs.end(), '\n'), 3) << pairs;
    Ending const explained =
        endingOf("search 'pipe 15 mm' --explain-line 1 --explain-line 3" + at + "-e " + list);
    EXPECT_EQ(explained.errors, "near_text: note: 2 matches left out: other numbers\n");
    std::string const reason = "only text has 15, only entry has 13\n";
    EXPECT_LT(explained.output.find(reason), explained.output.find("steel pipe"));
    EXPECT_EQ(explained.output.rfind("left out"), explained.output.find("left out"));
    EXPECT_EQ(endingOf("match -e " + list + " -t " + list + at).errors,
              "near_text: note: 2 matches left out: other numbers\n");
    EXPECT_EQ(endingOf("sweep --duplicates -p 40,90 --same-numbers -t " + list).errors,
              "near_text: note: 1 match left out: other numbers\n");
    EXPECT_NE(endingOf("search a --indices" + at + "-e " + list).errors.find("--indices: prints"),
              std::string::npos);
}

// What the samples' known pairs say of it.
TEST(SameNumbers, MakeMoreOfTheBestRight) {
    std::string const samples = NEAR_TEXT_SAMPLES "/";
    Pairs known;
    std::ifstream rows(samples + "pairs.tsv");
    std::string row;
    std::getline(rows, row);
    for (std::string text, entry; rows >> text >> entry; std::getline(rows, row))
        known.emplace(text, entry);
    auto const f1 = [&](std::string const& options) {
        Pairs const pairs = pairsOf("--prepare -p 60 --best -t " + samples + "supplier.txt -e " +
                                    samples + "catalogue.txt" + options);
        auto const right = std::count_if(pairs.begin(), pairs.end(),
                                         [&](auto const& pair) { return known.count(pair) > 0; });
        return 2.0 * static_cast<double>(right) / static_cast<double>(pairs.size() + known.size());
    };
    double const with = f1(" --same-numbers");
    EXPECT_GE(with, 0.75);
    EXPECT_GT(with, f1("") + 0.05);
}

TEST(Columns, OfOneTextAreJoined) {
    std::string const texts = fileOf("texts.csv", "id,\"na,me\",city\n1,Old Inn,\n2,,York\n3,,\n");
    std::string const entries = fileOf("entries.csv", "old,inn\nparis,\n");
    std::string const match = "match -P -p 50 -f csv --part -t " + texts + " -e " + entries +
                              " --entry-column 1,2 --text-column ";
    EXPECT_EQ(outputOf(match + "'\"na,me\",city' --keep id"),
              ",Old Inn,100,0,4,0,1,old inn,,1\n,York,,,,,,,,2\n,,,,,,,,,3\n");
    EXPECT_EQ(outputOf(match + "city,2,id | head -n 1"), ",Old Inn 1,94,1,5,0,1,old inn,\n");
    std::pair<std::string, std::string> const faults[] = {
        {"na,me", "texts.csv: there is no column 'na'"},
        {"city --entry-column 3", "entries.csv: there is no column '3'"},
        {"'\"na,me'", "--text-column: '\"na,me' has a quote that"},
        {"city,", "--text-column: 'city,' has a comma without a value"}};
    for (auto const& [options, part] : faults) {
        Ending const ending = endingOf(match + options);
        EXPECT_EQ(ending.status, 2);
        EXPECT_NE(ending.errors.find(part), std::string::npos) << ending.errors;
    }
}

TEST(Matched, AndUnmatchedAreTheWhole) {
    std::string const match = "match -f csv --part -p 100 -e " + fileOf("entries", "a\n") + " -t " +
                              fileOf("texts", "a\n\xFF\nb\n");
    EXPECT_EQ(outputOf(match + " --matched"),
              ",a,100,0,0,0,1,a,\n,,,,,,,,not valid UTF-8 at byte 1\n");
    EXPECT_EQ(outputOf(match + " --unmatched"), ",,,,,,,,not valid UTF-8 at byte 1\n,b,,,,,,,\n");
    EXPECT_NE(endingOf(match + " --matched --unmatched").errors.find("excludes"),
              std::string::npos);
}

// Nothing in a row depends on what else the part holds, or lacks.
TEST(Part, IsAnsweredAsInTheWhole) {
    std::string const match = "match --part -f csv -p 100 -e " + fileOf("entries", "a\n") + " -t ";
    std::tuple<std::string, std::string, int, std::string> const cases[] = {
        {"", "", 0, ""},
        {"", "--text-column name --keep id", 0, ""},
        {"\n", "--text-column 2", 0, ""},
        {"id,name\n7,a\n", "--text-column name --keep id", 0, ",a,100,0,0,0,1,a,,7\n"},
        {"7,a\n8\n", "--text-column 2 --keep 1", 0,
         ",a,100,0,0,0,1,a,,7\n,,,,,,,,\"has 1 field, but column 2 is asked for\",8\n"},
        {"7,a\n8,\"a\n", "--text-column 2", 2, ",a,100,0,0,0,1,a,\n"},  // cut within a row
        {"\xCC\xEE\xEB\xEE\xF2\xEE\xEA \xE1\xEE\xEB\xFC\xF8\xEE\xE9\n", "", 0,
         ",,,,,,,,not valid UTF-8 at byte 1\n"},
        {"%PDF-1", "", 0, ",%PDF-1,,,,,,,\n"},
        {"a\rb", "", 0, ",\"a\rb\",,,,,,,\n"}};
    for (auto const& [part, options, status, output] : cases) {
        Ending const ending = endingOf(match + fileOf("texts", part) + ' ' + options);
        EXPECT_EQ(ending.output, output) << part << ending.errors;
        EXPECT_EQ(ending.status, status) << part << ending.errors;
    }
}

// Unlike an exclusion, a word that is dropped takes its part of the limit along.
TEST(DropWords, AreGoneBeforeTheAddInSeesTheTexts) {
    std::string const words = fileOf("words", "LIMITED\n");
    std::string const list = fileOf("list", "limited\njaw limited\nsaw limited\n");
    std::string const commands[] = {"search 'saw limited' -f csv -e " + list,
                                    "match -f csv --matched -e " + list + " -t " + list,
                                    "duplicates -f csv " + list,
                                    "sweep -f csv -p 75 -e " + list + " -t " + list};
    std::string const expected[] = {"saw limited,100,0,1,1,3,saw limited,",
                                    "2,jaw limited,100,0,1,0,2,jaw limited,\n", "", "75,1,0,2,4,2"};
    for (std::size_t i = 0; i < std::size(commands); ++i) {
        std::string const at = i == 3 ? " -P" : " -P -p 75";
        std::string const output = outputOf(commands[i] + at + " --drop-words " + words);
        EXPECT_NE(output.find(expected[i]), std::string::npos) << output;
        EXPECT_NE(output, outputOf(commands[i] + at + " --exclusions " + words)) << commands[i];
    }
}

TEST(Truncate, CutsAtTheLastBlankThatFits) {
    auto const runs = [](std::size_t first, std::u16string const& between, std::size_t second) {
        return std::u16string(first, u'a') + between + std::u16string(second, u'b');
    };
    std::pair<std::u16string, std::size_t> const cases[] = {
        {runs(1000, u"", 0), 1000},        {runs(1000, u" ", 5), 1000},
        {runs(999, u"\t", 1), 999},        {runs(400, u" ", 600), 400},
        {runs(1001, u" ", 5), 1000},       {runs(0, u"   ", 1000), 1000},
        {runs(999, u"\U0001F600", 1), 999}};
    for (auto const& [text, length] : cases) {
        std::u16string cut = text;
        EXPECT_EQ(near_text::truncate(cut), text.size() > 1000) << length;
        EXPECT_EQ(cut, text.substr(0, length));
    }
}

TEST(Truncate, SearchesForWhatFitsAndTellsHowMany) {
    std::string const a(700, 'a'), b(300, 'b');
    std::string const texts = fileOf("texts", a + ' ' + b + '\n' + a + '\n');
    std::string const lists = "-p 90 -t " + texts + " -e " + fileOf("entries", a + '\n');
    for (std::string const how : {"match ", "match --mutual ", "sweep "}) {
        EXPECT_EQ(endingOf(how + lists).status, 2);
        Ending const ending = endingOf(how + "--truncate " + lists);
        EXPECT_EQ(ending.status, 0);
        EXPECT_EQ(ending.errors, "near_text: note: 1 of 2 lines cut to 1000 units\n");
    }
    EXPECT_EQ(pairsOf("--mutual --truncate " + lists), Pairs({{"1", "1"}, {"2", "1"}}));
    EXPECT_EQ(
        endingOf("search '" + a + ' ' + b + "' --indices --truncate -p 90 -e " + texts).output,
        "1\n");
    EXPECT_EQ(outputOf("sweep -f csv --truncate --duplicates -p 90 -t " + texts),
              "percent,matches\n90,1\n");
}

}  // namespace
