// The program's input as UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "near_text/input/byte_input.h"
#include "near_text/input/decoder.h"

namespace near_text {

// A file of text and, unless it is UTF-8 or has a byte order mark, its encoding.
struct TextFile {
    TextFile(std::string fileName, std::string encodingName = {})
        : name(std::move(fileName)), encoding(std::move(encodingName)) {}

    std::string name;
    std::string encoding;
    std::string encodingOption = "--encoding";  // that gives this file's encoding, for messages
    bool isPart = false;  // cut out of a file, so what it looks like tells nothing
};

// A file's bytes as UTF-8, as they come. Throws std::runtime_error, with the file's name, for a
// file that is no text at all or looks like another encoding than UTF-8 while none is given, and
// for an unknown encoding.
class TextInput {
public:
    explicit TextInput(TextFile const& file);

    // Waits and appends at least one character; false at the end, where it appends none.
    bool read(std::string& utf8);

    std::string const& name() const { return input_.name(); }
    std::string faultOf(std::string_view text) const { return decoder_.faultOf(text); }

    // The share of the file that was read, of the last reading only the part that `taken` says;
    // nothing where the file's size is not known. All are from 0 to 1.
    std::optional<double> share(double taken) const;

private:
    ByteInput input_;
    Decoder decoder_;
    bool mayBeNoText_;  // unless the user insists
    std::string encodingOption_;
    bool isEnded_ = false;
    std::string block_;
    std::uintmax_t bytesBefore_ = 0;  // the last block
};

// As UTF-8. Throws std::runtime_error, with the line where bytes are no character; those of a file
// that is UTF-8 already are not checked. Otherwise throws as TextInput.
std::string readWhole(TextFile const& file);

}  // namespace near_text
