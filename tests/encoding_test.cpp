#include "near_text/input/decoder.h"

#include "near_text/input/line_reader.h"
#include "near_text/output/encoder.h"
#include "tests/test_support.h"

namespace {

using namespace std::string_literals;
using near_text::Decoder;
using near_text::Line;
using near_text::LineReader;

std::string encoded(std::string const& encoding, std::string const& text) {
    return near_text::Encoder(encoding).encoded(text);
}

std::string decoded(std::string const& encoding, std::string const& bytes, std::size_t piece) {
    Decoder decoder(encoding);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += piece)
        decoder.decode(bytes.substr(i, piece), text);
    decoder.finish(text);
    return text;
}

std::string messageOf(auto const& call) {
    try {
        call();
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(Encoding, ReadsInPiecesWhatItWrites) {
    std::string text = "red ball\r\n\u042F\u2116 7;\"\u00AB\u0451\u00BB\"\n";
    std::string const marked = "\xEF\xBB\xBF" + text;
    std::string const mark = "\uFEFF";
    std::string const pairs = text + "\U0001F600\U00010400\n";
    std::string longText = "x";  // of pairs at odd places, more than are converted at once
    for (int i = 0; i < 1500; ++i)
        longText += "\U0001F600";
    std::tuple<std::string, std::string, std::string> const cases[] = {
        {"", text, text},
        {"", marked, text},
        {"koi8-r", marked, text},
        {"", "\xEF\xBB", "\xEF\xBB"},
        {"", "\xEF", "\xEF"},
        {"", "", ""},
        {"", encoded("utf-16", longText), longText},
        {"", "\xFE\xFF" + encoded("utf-16be", pairs), pairs},
        {"Windows1251", encoded("windows-1251", text), text},
        {"utf-16", encoded("utf-16le", pairs), pairs},
        {"utf-16", encoded("utf-16be", pairs), pairs},
        {"utf-16", encoded("utf-16be", "МОЛОТОК"), "МОЛОТОК"},
        {"utf-16be", encoded("utf-16be", longText), longText},
        {"utf-32", encoded("utf-32", pairs), pairs},
        {"", encoded("utf-32le", mark + pairs), pairs},
        {"koi8-r", encoded("utf-32be", mark + pairs), pairs},
        {"utf-16", "\xFF\xFE", ""},
        {"gb18030", encoded("gb18030", longText), longText},
        {"shift_jis", "\x93\xFA\x96\x7B", "\u65E5\u672C"}};
    for (auto const& [encoding, bytes, expected] : cases) {
        for (std::size_t const piece : {1U, 2U, 3U, 8191U})
            EXPECT_EQ(decoded(encoding, bytes, piece), expected) << encoding << ' ' << piece;
    }
}

TEST(Encoding, NamesTheCharacterThatIsNone) {
    std::string const unpaired = encoded("utf-16le", "ab\n") + "c\0\x3D\xD8\n\0\0\xDC"s +
                                 encoded("utf-16le", "\nd\n") + "e\0\x3D\xD8"s;
    LineReader reader({fileOf("unpaired", unpaired), "utf-16le"});
    std::vector<std::string> faults;
    for (Line line; reader.next(line);)
        faults.push_back(line.fault);
    EXPECT_EQ(faults, (std::vector<std::string>{"", "not valid utf-16le at character 2",
                                                "not valid utf-16le at character 1", "",
                                                "not valid utf-16le at character 2"}));
    EXPECT_NE(messageOf([] {
                  near_text::readWhole({fileOf("unpaired", "a\nb\x98"), "us-ascii"});
              }).find("unpaired:2: not valid us-ascii at character 2"),
              std::string::npos);
    EXPECT_EQ(messageOf([] { encoded("windows-1251", "\u044F\U0001F600"); }),
              "windows-1251 has no U+1F600");
    EXPECT_NE(messageOf([] { Decoder("windows-1521"); }).find("windows-1251"), std::string::npos);
    // A part that failed leaves nothing behind.
    near_text::Encoder encoder("iso-2022-jp");
    EXPECT_THROW(encoder.encoded("\u65E5\u0E01"), near_text::NotEncodable);
    EXPECT_EQ(encoder.encoded("a\n"), "a\n");
}

TEST(Encoding, TellsOnceWhatAFileLooksLike) {
    std::string const russian =
        "Молоток слесарный, 500 г\nПила по дереву\nОтвёртка крестовая\nКраска белая матовая\n";
    std::string const french =
        "Caf\u00E9 moulu\nTh\u00E9 vert\nP\u00E2t\u00E9 de campagne\nCr\u00E8me\n";
    std::tuple<std::string, std::string> const others[] = {
        {"windows-1251", russian},     {"koi8-r", russian},
        {"utf-16le", russian},         {"cp866", russian},
        {"windows-1251", "МОЛОТОК\n"}, {"utf-16be", "Red ball\n"},
        {"utf-16le", "МОЛОТОК\n"},     {"utf-16be", "Переподготовка\n"},
        {"utf-32le", russian},         {"utf-32be", russian}};
    for (auto const& [encoding, text] : others) {
        std::string const bytes = encoded(encoding, text);
        std::string const hint =
            "looks like " + encoding + ", not UTF-8: --entries-in " + encoding + " reads it";
        std::string all;
        EXPECT_EQ(messageOf([&] { Decoder("", "--entries-in").decode(bytes, all); }),
                  hint + "; --entries-in utf-8 tells where it is not");
        // Too late to break off.
        Decoder decoder("", "--entries-in");
        std::string const start(1 << 17, 'a');
        for (std::string const& piece : {start, bytes.substr(0, 1), bytes.substr(1)})
            decoder.decode(piece, all);
        EXPECT_EQ(all, start + bytes);
        EXPECT_EQ(decoder.takeHint(), hint);
        EXPECT_EQ(decoded("utf-8", bytes, 7), bytes);
    }
    EXPECT_NE(messageOf([&] {
                  decoded("", encoded("windows-1252", french), 1 << 16);
              }).find("is not UTF-8"),
              std::string::npos);
    // Bad lines are told one by one where the rest is good.
    for (std::string const& bytes :
         {russian + encoded("windows-1251", "Молоток\n") + russian, "caf\xE9\n"s, "a\0b\0c\0\n"s,
          "a\1b\1c\1d\1efghijklmnop\n"s, std::string(12, '\0')})
        EXPECT_EQ(decoded("", bytes, 1 << 16), bytes);
}

TEST(Encoding, TellsThatUtf8IsReadAsSomethingElse) {
    std::string const notes =
        "is valid UTF-8, but read as cp1251; --encoding utf-8 reads it and all "
        "other files so";
    std::string const late = std::string(1 << 17, 'a') + "é";
    std::tuple<std::string, std::string, std::string> const cases[] = {
        {"cp1251", "Молоток\n", notes},
        {"cp1251", late, notes},
        {"cp1251", "\uFEFFМолоток\n", ""},
        {"", "\uFEFF" + encoded("cp1251", "Молоток\n"), ""},
        {"cp1251", encoded("utf-16le", "\uFEFF\u4E9C\u8A9E\n"), ""},
        {"cp1251", "ball\n", ""},
        {"cp1251", encoded("cp1251", "Молоток\n"), ""},
        {"cp1251", encoded("cp1251", "м") + "Молоток\n", ""},
        {"utf-16le", encoded("utf-16le", "Молоток\n"), ""},
        {"utf-8", "Молоток\n", ""}};
    for (auto const& [encoding, bytes, note] : cases) {
        for (std::size_t const piece : {std::size_t{1}, bytes.size()}) {
            Decoder decoder(encoding);
            std::string text, hints;
            for (std::size_t i = 0; i < bytes.size(); i += piece) {
                decoder.decode(bytes.substr(i, piece), text);
                hints += decoder.takeHint();
            }
            decoder.finish(text);
            EXPECT_EQ(hints + decoder.takeHint(), note) << bytes.substr(0, 20);
        }
    }
}

TEST(Encoding, NamesWhatIsNoText) {
    std::string const zip = "PK\3\4\x14\0\6\0"s;
    std::pair<std::string, std::string> const cases[] = {
        {"\x1F\x8B\b\0\0"s,
         "is compressed with gzip: unpack it first (--encoding utf-8 reads it all the same)"},
        {zip + "[Content_Types].xml..xl/workbook.xml", "is a spreadsheet: save it as CSV first"},
        {zip + "mimetypeapplication/vnd.oasis.opendocument.spreadsheet",
         "is a spreadsheet: save it as CSV first"},
        {zip + "[Content_Types].xml..word/document.xml", "is a formatted document: save"},
        {zip + "list.txt", "is an archive: unpack it first"},
        {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0"s, "is an old office file, such as .xls: save"},
        {"%PDF-1.7\n%\xE2\xE3\xCF\xD3\n", "is a PDF: save its text"},
        {contentOf(NEAR_TEXT_LIBRARY), "is a program"},
        {"MZ\x90\0\3\0\0\0"s + std::string(60, '\0'), "looks binary"},
        {encoded("utf-32le", std::string(50, 'x')), "looks like utf-32le"}};
    for (auto const& [bytes, hint] : cases) {
        std::string const file = fileOf("file", bytes);
        for (std::string const encoding : {"", "windows-1251"}) {
            if (!encoding.empty() && hint.starts_with("looks")) continue;
            std::string const message = messageOf([&] { near_text::readWhole({file, encoding}); });
            EXPECT_NE(message.find("/file: " + hint), std::string::npos) << message;
        }
    }
    EXPECT_EQ(near_text::readWhole(fileOf("file", "PK 7;GIF;%PDF\n")), "PK 7;GIF;%PDF\n");
}

}  // namespace
