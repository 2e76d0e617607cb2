// JSON, written as it comes: no tree of it is made.
#pragma once

#include <string>
#include <string_view>

namespace near_text {

class JsonWriter {
public:
    // A bracket: '{', '[' and what closes them.
    void open(char bracket);
    void close(char bracket) { json_ += bracket; }
    // Of the value that follows.
    void name(std::string_view text);
    // In place of bytes that are not UTF-8 stands a replacement character.
    void value(std::string_view text);
    // Of a number.
    void digits(std::string_view number);

    void member(std::string_view itsName, std::string_view text);
    void member(std::string_view itsName, unsigned long number);

    void endLine() { json_ += '\n'; }
    std::string take() { return std::move(json_); }

private:
    void separate();
    void appendQuoted(std::string_view text);

    std::string json_;
};

}  // namespace near_text
