#include "near_text/input/table.h"

#include "near_text/input/source.h"
#include "near_text/output/delimited_row.h"

#include "tests/test_support.h"

namespace {

using namespace std::string_literals;
using near_text::Row;
using near_text::TableLayout;
using near_text::TableReader;

// Each row as LINE:FIELD|FIELD, or LINE!FAULT.
std::vector<std::string> rowsOf(std::string const& content, TableLayout shape = {},
                                std::string const& column = "1") {
    TableReader reader(fileOf("table", content), shape);
    reader.column(column);
    std::vector<std::string> rows;
    for (Row row; reader.next(row);) {
        std::string& shown = rows.emplace_back(std::to_string(row.line));
        for (std::size_t i = 0; i < row.fields.size(); ++i)
            shown += (i == 0 ? ':' : '|') + row.fields[i];
        if (!row.fault.empty()) shown += '!' + row.fault;
    }
    return rows;
}

TEST(Table, ReadsRows) {
    struct Case {
        std::string content;
        TableLayout shape;
        std::vector<std::string> rows;
    } const cases[] = {
        {"a,b\r\n\"c,\"\"d\"\"\",\r\n", {}, {"1:a|b", "2:c,\"d\"|"}},
        {"\"a\r\n\nb\",c\r\n\r\n\nd", {}, {"1:a\r\n\nb|c", "6:d"}},
        {" a ; \"b\";5\" c\"\"\n\"\"\n", {.delimiter = ';'}, {"1: a | \"b\"|5\" c\"\"", "2:"}},
        {"\"a\tb\\x\\\n", {.delimiter = '\t'}, {"1:\"a|b\\x\\"}},
        {"a,b\t\";\"\n", {.delimiter = TableLayout::kGuessed}, {"1:a,b|\";\""}},
        {"a,b;\";\"\n", {.delimiter = TableLayout::kGuessed}, {"1:a,b|;"}},
        {"\xEF\xBB\xBFn,m\n\"1\n2\",3\n4\n", {.hasHeader = true}, {"2:1\n2|3", "4:4"}},
        {"a\n\"b\rc\",d\n", {}, {"1:a", "2:b\rc|d"}},
        {"\"a\rb\",c\rd\r\ne\n", {}, {"1:a\rb|c", "3:d", "4:e"}},
        {"", {}, {}},
        // A fault ends with its row, and the next is as good as any.
        {"a\n\"b\"c,\"d\ne\n",
         {},
         {"1:a", "2!has text after the quote that closes field 1", "3:e"}},
        {"a\n\"b\n\xFF\",c\nd\0\ne\n"s,
         {},
         {"1:a", "2:b\n\xFF|c!line 3: not valid UTF-8 at byte 1", "4:d\0!contains a NUL"s, "5:e"}},
        {"a\n\"b\n\",c,\"d\n", {}, {"1:a", "2:b\n|c!the quote opened in line 3 is not closed"}},
        {"a\n\"b\nc\nd\n",
         {},
         {"1:a",
          "2!the quote opened in line 2 is not closed, so no row is read in the 2 lines behind "
          "it"}},
    };
    for (auto const& [content, shape, rows] : cases)
        EXPECT_EQ(rowsOf(content, shape), rows) << content;
}

TEST(Table, FindsColumns) {
    std::string const table = "id,name,2,id\n7,ball,x,8\n9\n";
    EXPECT_EQ(
        rowsOf(table, {.hasHeader = true}, "name"),
        (std::vector<std::string>{"2:7|ball|x|8", "3:9!has 1 field, but column 2 is asked for"}));
    TableReader reader(fileOf("table", table), {.hasHeader = true});
    EXPECT_EQ(reader.column("2"), 2U);  // a name first
    EXPECT_EQ(reader.column("4"), 3U);
    TableReader blanks(fileOf("table", " id,name\u00A0, name, x y ,x y\n"), {.hasHeader = true});
    EXPECT_EQ(blanks.column("id"), 0U);
    EXPECT_EQ(blanks.column(" name"), 2U);
    EXPECT_EQ(blanks.column("x y"), 4U);
    EXPECT_EQ(blanks.column("\tid "), 0U);
    std::tuple<std::string, std::string, bool, std::string> const failures[] = {
        {" a,a \n", "a", true, "several columns are called 'a'"},
        {" a,a \n", "b", true, "there is no column 'b'"},
        {table, "id", true, "several columns are called 'id'"},
        {table, "5", true, "no column '5'; the header has id, name, 2, id"},
        {table, "0", true, "no column '0'"},
        {table, "5", false, "the first row has 4 fields"},
        {table, "name", false, "--header"},
        {"id;name\n", "name", true, "Is the --delimiter ';'?"},
        {"\n", "1", true, "has no header"},
        {"a,\"b\n", "1", true, "table:1: the quote opened in line 1"}};
    for (auto const& [content, column, hasHeader, part] : failures) {
        try {
            rowsOf(content, {.hasHeader = hasHeader}, column);
            ADD_FAILURE() << part;
        } catch (std::runtime_error const& error) {
            EXPECT_NE(std::string(error.what()).find(part), std::string::npos) << error.what();
        }
    }
    for (std::string const name : {"", "ab", "\"", "\n", "\xC2"})
        EXPECT_THROW(near_text::delimiterOf(name), std::runtime_error) << name;
}

TEST(Table, KeepsTheCellsThatCanBeReadOfARowWithAFault) {
    std::string const file = fileOf("table", "7,\xFF,\xFE\n8,\0,x\n9\n5,\"a\"b,z\n1,w,v\n4,\"\n"s);
    near_text::RowReader reader({file, {"2"}, {"1", "3"}, {}});
    std::vector<std::vector<std::string>> kept;
    std::string texts;
    for (near_text::TextRow row; reader.next(row); texts += row.text + ';')
        kept.push_back(row.kept);
    EXPECT_EQ(kept, (std::vector<std::vector<std::string>>{
                        {"7", ""}, {"8", "x"}, {"9", ""}, {"5", ""}, {"1", "v"}, {"4", ""}}));
    EXPECT_EQ(texts, ";;;;w;;");
}

TEST(Table, BoundsARow) {
    std::string const large(1 << 20, 'x');
    EXPECT_EQ(rowsOf("7," + large + "\na\n"),
              (std::vector<std::string>{"1:7!is longer than 1 MiB", "2:a"}));
    std::vector<std::string> const rows = rowsOf("a\nb,\"\n" + large + "\nc\n");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_TRUE(rows[1].starts_with("2:b!the quote opened in line 2 is not closed within"));
}

TEST(Table, ReadsTheRowsItWrites) {
    std::vector<std::string> const fields = {"a",  "",   " b", "c;\"d\"", "e\nf\r\n\\ng\\",
                                             "\t", "5\""};
    std::string const row = near_text::csvRow(fields, ';');
    EXPECT_EQ(row, "a;;\" b\";\"c;\"\"d\"\"\";\"e\nf\r\n\\ng\\\";\t;\"5\"\"\"\n");
    TableReader reader(fileOf("table", row + near_text::csvRow({""})), {.delimiter = ';'});
    TableReader tabbed(fileOf("tabbed", near_text::tsvRow(fields)), {.delimiter = '\t'});
    Row read;
    ASSERT_TRUE(tabbed.next(read));
    EXPECT_EQ(read.fields, fields);
    ASSERT_TRUE(reader.next(read));
    EXPECT_EQ(read.fields, fields);
    ASSERT_TRUE(reader.next(read));
    EXPECT_EQ(read.fields, std::vector<std::string>{""});
    EXPECT_EQ(near_text::tsvRow({"a\\", "", "\tb\r\n"}), "a\\\\\t\t\\tb\\r\\n\n");
}

}  // namespace
