#include "near_text/output/json_writer.h"

#include <cstdio>

#include "near_text/text/code_points.h"

namespace near_text {

namespace {

// How JSON writes a character that cannot stand for itself in a string; empty for all others.
std::string_view escaped(char c, char (&code)[8]) {
    constexpr std::string_view kShort = "\"\"\\\\\bb\ff\nn\rr\tt";  // each with its letter
    constexpr char kFirstPlain = ' ';
    bool const isPlain = c < 0 || (c >= kFirstPlain && c != '"' && c != '\\');
    if (isPlain) return {};
    for (std::size_t i = 0; i < kShort.size(); i += 2) {
        if (kShort[i] != c) continue;
        code[0] = '\\';
        code[1] = kShort[i + 1];
        return {code, 2};
    }
    return {code, static_cast<std::size_t>(std::snprintf(code, sizeof code, "\\u%04x", c))};
}

}  // namespace

void JsonWriter::open(char bracket) {
    separate();
    json_ += bracket;
}

void JsonWriter::name(std::string_view text) {
    separate();
    appendQuoted(text);
    json_ += ':';
}

void JsonWriter::value(std::string_view text) {
    separate();
    appendQuoted(text);
}

void JsonWriter::digits(std::string_view number) {
    separate();
    json_ += number;
}

void JsonWriter::member(std::string_view itsName, std::string_view text) {
    name(itsName);
    value(text);
}

void JsonWriter::member(std::string_view itsName, unsigned long number) {
    name(itsName);
    digits(std::to_string(number));
}

void JsonWriter::separate() {
    constexpr std::string_view kBeforeFirst = "{[:\n";
    bool const isFirst = json_.empty() || kBeforeFirst.find(json_.back()) != kBeforeFirst.npos;
    if (!isFirst) json_ += ',';
}

void JsonWriter::appendQuoted(std::string_view text) {
    json_ += '"';
    std::size_t begin = 0;  // of what is not appended yet
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const at = i;
        char code[8];
        std::string_view const instead =
            nextCodePoint(text, i) < 0 ? "\uFFFD" : escaped(text[at], code);
        if (instead.empty()) continue;
        json_ += text.substr(begin, at - begin);
        json_ += instead;
        begin = i;
    }
    json_ += text.substr(begin);
    json_ += '"';
}

}  // namespace near_text
