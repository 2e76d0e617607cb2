#include "near_text/input/file_kind.h"

namespace near_text {

namespace {

using namespace std::string_view_literals;

constexpr char const* kSpreadsheet = "is a spreadsheet: save it as CSV first";
constexpr char const* kDocument = "is a formatted document: save it as plain text first";
constexpr char const* kArchive = "is an archive: unpack it first";
constexpr char const* kPicture = "is a picture, not text";

struct Kind {
    std::string_view signature;
    char const* hint;
};
constexpr Kind kKinds[] = {{"\x1F\x8B", "is compressed with gzip: unpack it first"},
                           {"\xFD\x37zXZ\0"sv, "is compressed with xz: unpack it first"},
                           {"BZh91AY&SY", "is compressed with bzip2: unpack it first"},
                           {"\x28\xB5\x2F\xFD", "is compressed with zstd: unpack it first"},
                           {"7z\xBC\xAF\x27\x1C", kArchive},
                           {"Rar!\x1A\x07", kArchive},
                           {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1",
                            "is an old office file, such as .xls: save it as CSV first"},
                           {"%PDF-", "is a PDF: save its text as a file of its own first"},
                           {"{\\rtf", kDocument},
                           {"SQLite format 3\0"sv, "is a database: export the table as CSV first"},
                           {"\x7F\x45LF", "is a program, not text"},
                           {"\x89PNG\r\n", kPicture},
                           {"\xFF\xD8\xFF", kPicture},
                           {"GIF89a", kPicture}};

// Office files are zip archives; names of the files inside stand in them as they are.
constexpr std::string_view kZip = "PK\x03\x04";
constexpr Kind kInsideZip[] = {{"opendocument.spreadsheet", kSpreadsheet},
                               {"opendocument.text", kDocument},
                               {"xl/w", kSpreadsheet},
                               {"word/", kDocument}};

}  // namespace

std::string notTextHint(std::string_view start) {
    for (auto const& [signature, hint] : kKinds) {
        if (start.starts_with(signature)) return hint;
    }
    if (!start.starts_with(kZip)) return {};
    for (auto const& [name, hint] : kInsideZip) {
        if (start.find(name) != std::string_view::npos) return hint;
    }
    return kArchive;
}

}  // namespace near_text
