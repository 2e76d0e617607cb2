// Walks through a text from one section end to the next.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

#include "compare/unit_bits.h"
#include "compare/utf16_string.h"
#include "compare/white_space.h"

namespace comparer {

// What lies between two section ends, with or without a word in it.
struct Section {
    Utf16View text;
    unsigned long length;  // one more than the text has units when a section end stands before it
};

// As a test for `bitsWhere`.
struct IsSectionEnd {
    unsigned short separator;

    bool operator()(unsigned short unit) const { return unit == separator || unit == 0; }
    UnitLanes operator()(UnitLanes units) const {
        return (units == UnitLanes::filledWith(separator)) | (units == UnitLanes());
    }
};

class SectionScanner {
public:
    // The text of `input` is not copied. Whitespace is tested before the separator, so a separator
    // that is whitespace separates nothing; NUL ends a section whatever the separator is.
    SectionScanner(Utf16View input, unsigned short separator)
        : input_(input),
          isEnd_{isWhiteSpaceUnit(separator) ? static_cast<unsigned short>(0) : separator},
          ends_(bitsWhere(input, isEnd_)) {}

    // False when there is no further section; the text behind the last section end is one, be it
    // empty.
    bool next(Section& section) {
        if (isDone_) return false;
        while (ends_ == 0 && input_.size() - block_ > kBlockUnits) {
            block_ += kBlockUnits;
            ends_ = bitsWhere({input_.data() + block_, input_.size() - block_}, isEnd_);
        }
        isDone_ = ends_ == 0;
        unsigned long const end =
            isDone_ ? input_.size() : block_ + static_cast<unsigned long>(std::countr_zero(ends_));
        section = {{input_.data() + start_, end - start_}, end - start_ + leading_};
        ends_ &= ends_ - 1;
        start_ = end + 1;
        leading_ = 1;
        return true;
    }

    // The next section that is not whitespace alone.
    bool nextWithWord(Section& section) {
        while (next(section)) {
            for (unsigned short const unit : section.text) {
                if (!isWhiteSpaceUnit(unit)) return true;
            }
        }
        return false;
    }

private:
    Utf16View const input_;
    IsSectionEnd const isEnd_;
    unsigned long block_ = 0;    // of 64 units, that is being looked at
    std::uint64_t ends_;         // section ends in it that were not yet given out
    unsigned long start_ = 0;    // of the next section
    unsigned long leading_ = 0;  // 1 behind a section end
    bool isDone_ = false;
};

}  // namespace comparer
