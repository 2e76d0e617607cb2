#include "near_text/match_format.h"

#include <nlohmann/json.hpp>

#include "near_text/output.h"

namespace near_text {

namespace {

using Json = nlohmann::ordered_json;

std::string escaped(std::string const& text) {
    constexpr std::string_view kPlain = "\\\t\r";
    constexpr std::string_view kLetters = "\\tr";
    std::string result;
    for (char const c : text) {
        std::size_t const i = kPlain.find(c);
        if (i != std::string_view::npos) result += '\\';
        result += i == std::string_view::npos ? c : kLetters[i];
    }
    return result;
}

std::string shown(Format format, std::string const& text) {
    return format == Format::Tsv ? escaped(text) : onOneLine(text);
}

std::string number(MatchFormat how, Line const& line) {
    if (!how.isNumbered) return {};
    return std::to_string(line.number) + (how.format == Format::Tsv ? "\t" : "  ");
}

Json numberedObject(MatchFormat how, Line const& line) {
    Json object = Json::object();
    if (how.isNumbered) object["line"] = line.number;
    return object;
}

std::string formatObject(MatchFormat how, Line const& line, EntryList const& list,
                         std::vector<unsigned long> const& indices) {
    Json object = numberedObject(how, line);
    object["text"] = line.text;
    Json& matches = object["matches"] = Json::array();
    for (unsigned long const index : indices) {
        Entry const& entry = list.entries.at(index);
        matches.push_back({{"index", index}, {"line", entry.place}, {"entry", entry.text}});
    }
    return object.dump() + '\n';
}

}  // namespace

std::string formatMatches(MatchFormat how, Line const& line, EntryList const& list,
                          std::vector<unsigned long> const& indices) {
    if (how.format == Format::Json) return formatObject(how, line, list, indices);
    bool const isTsv = how.format == Format::Tsv;
    std::string output = number(how, line) + shown(how.format, line.text);
    char const* before = isTsv ? "\t" : "  =>  ";
    for (unsigned long const index : indices) {
        Entry const& entry = list.entries.at(index);
        output += before + std::to_string(index) + ':' + std::to_string(entry.place) + ':' +
                  shown(how.format, entry.text);
        before = isTsv ? "\t" : " | ";
    }
    if (indices.empty() && !isTsv) output += "  =>  -";
    return output + '\n';
}

std::string formatFailure(MatchFormat how, Line const& line, std::string const& error) {
    if (how.format == Format::Json) {
        Json object = numberedObject(how, line);
        object["error"] = error;
        return object.dump() + '\n';
    }
    return number(how, line) + (how.format == Format::Tsv ? "\t" : "") + "error: " + error + '\n';
}

}  // namespace near_text
