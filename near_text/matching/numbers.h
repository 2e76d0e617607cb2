// The numbers of texts, by which things that are typed alike are told apart: 13 mm and 17 mm.
//
// A number is a longest run of decimal digits, those of all scripts by their value, wherever it
// stands: M8x40 has 8 and 40. Leading zeros do not count. Nothing else is part of a number, so 1.5
// and 1,5 are both 1 and 5. How often a text has a number makes no difference, nor does their
// order. The numbers of excluded words count, since these stay in the texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace near_text {

class Numbers {
public:
    explicit Numbers(std::u16string_view text);

    // Whether each side has a number that the other lacks.
    bool contradict(Numbers const& other) const;

    // Those that the other lacks, with blanks between them.
    std::string notIn(Numbers const& other) const;

private:
    bool isWithin(Numbers const& other) const;

    std::vector<std::string> values_;  // ascending, each once
};

}  // namespace near_text
