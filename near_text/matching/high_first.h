// Whether the search for the nearest matches should ask at a high percentage first. That is quick,
// and where it finds enough, the slow search at the percentage that was wanted is spared; where it
// seldom does, it only adds to that. So experience decides, text by text. No answer depends on it.
#pragma once

#include <cstddef>

namespace near_text {

class HighFirst {
public:
    // For the next text.
    bool isDue() {
        constexpr std::size_t kLearning = 32;  // and from then on one text in as many
        bool const isPaying =
            full.count == 0 || static_cast<double>(enough) * full.mean() > high.seconds;
        return high.count < kLearning || isPaying || ++passed % kLearning == 0;
    }
    void tried(double seconds, bool wasEnough) {
        high.add(seconds);
        if (wasEnough) ++enough;
    }
    void searchedFully(double seconds) { full.add(seconds); }

private:
    struct Cost {
        double seconds = 0;
        std::size_t count = 0;

        void add(double more) {
            seconds += more;
            ++count;
        }
        double mean() const { return seconds / static_cast<double>(count); }
    };

    Cost high, full;
    std::size_t enough = 0;  // of the searches at the high percentage
    std::size_t passed = 0;  // texts for which there was none
};

}  // namespace near_text
