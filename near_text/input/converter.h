// Encodings by name. Inside, text is UTF-8; a converter of ICU's leads to an encoding and back.
#pragma once

#include <memory>
#include <string>

struct UConverter;

namespace near_text {

struct CloseConverter {
    void operator()(UConverter* converter) const;
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

// Encodings are named as ICU knows them: case, hyphens and underscores do not count. Throws
// std::runtime_error, with examples, when there is none of that name. The converter stops at what
// it cannot convert.
Converter openConverter(std::string const& encoding);

// ICU's own name of the encoding.
std::string canonicalName(Converter const& converter);

}  // namespace near_text
