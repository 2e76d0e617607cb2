// The left-overs are aligned by the table of the edit distance (Wagner and Fischer), in which only
// the way to each cell is kept. It is walked from the end, and of ways equally short the one is
// taken that pairs units, so the same texts always get the same marks.
#include "near_text/matching/difference.h"

#include <algorithm>
#include <numeric>

#include "near_text/input/text_codec.h"
#include "near_text/text/code_points.h"

namespace near_text {

namespace {

// The units of a text that are left, by their places.
std::vector<std::size_t> placesOf(reference::Words const& words, std::u16string_view units) {
    std::vector<std::size_t> places;
    for (std::u16string_view const word : words) {
        auto const begin = static_cast<std::size_t>(word.data() - units.data());
        for (std::size_t i = 0; i < word.size(); ++i)
            places.push_back(begin + i);
    }
    return places;
}

// For a cell, how the least edits end that make so much of `first` so much of `second`.
class Table {
public:
    enum class Step : char { Both, First, Second };  // the last unit of both, or of one alone

    Table(std::u16string_view first, std::u16string_view second)
        : width_(second.size() + 1), steps_((first.size() + 1) * width_, Step::Second) {
        std::vector<std::size_t> row(width_);
        std::iota(row.begin(), row.end(), std::size_t{0});
        for (std::size_t i = 1; i <= first.size(); ++i) {
            std::size_t corner = row[0]++;  // above and to the left of the cell in turn
            steps_[i * width_] = Step::First;
            for (std::size_t j = 1; j < width_; ++j) {
                std::size_t const both = corner + (first[i - 1] == second[j - 1] ? 0 : 1);
                corner = row[j];
                row[j] = std::min({both, row[j] + 1, row[j - 1] + 1});
                if (row[j] == both) {
                    steps_[i * width_ + j] = Step::Both;
                } else if (row[j] == corner + 1) {
                    steps_[i * width_ + j] = Step::First;
                }
            }
        }
    }

    Step at(std::size_t i, std::size_t j) const { return steps_[i * width_ + j]; }

private:
    std::size_t width_;
    std::vector<Step> steps_;
};

// One text's units on their way to spans.
class MarkedUnits {
public:
    MarkedUnits(PrintedText const& text, reference::Side const& side)
        : text_(text),
          marks_(text.units.size(), Mark::Ignored),
          left_(placesOf(side.left, text.units)),
          leftUnits_(reference::joined(side.left)) {
        for (std::size_t const place : placesOf(side.words, text.units))
            marks_[place] = Mark::Cancelled;
        for (std::size_t const place : left_)
            marks_[place] = Mark::Replaced;
    }

    std::u16string const& left() const { return leftUnits_; }
    void mark(std::size_t numberOfLeft, Mark mark) { marks_[left_[numberOfLeft]] = mark; }

    Spans spans() const {
        std::vector<Mark> ofBytes(text_.length, Mark::Ignored);
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            for (std::size_t at = text_.origins[i].begin; at < text_.origins[i].end; ++at)
                ofBytes[at] = std::max(ofBytes[at], marks_[i]);
        }
        Spans spans;
        for (std::size_t at = 0; at < ofBytes.size(); ++at) {
            if (spans.empty() || spans.back().mark != ofBytes[at])
                spans.push_back({at, at, ofBytes[at]});
            spans.back().end = at + 1;
        }
        return spans;
    }

private:
    PrintedText const& text_;
    std::vector<Mark> marks_;
    std::vector<std::size_t> left_;
    std::u16string leftUnits_;
};

void align(MarkedUnits& first, MarkedUnits& second) {
    constexpr std::size_t kMostCells = std::size_t{1} << 24;
    std::size_t i = first.left().size(), j = second.left().size();
    if ((i + 1) * (j + 1) > kMostCells) return;
    Table const table(first.left(), second.left());
    while (i + j > 0) {
        auto const step = table.at(i, j);
        if (step == Table::Step::Both) {
            bool const isSame = first.left()[--i] == second.left()[--j];
            first.mark(i, isSame ? Mark::Same : Mark::Replaced);
            second.mark(j, isSame ? Mark::Same : Mark::Replaced);
        } else if (step == Table::Step::First) {
            first.mark(--i, Mark::Extra);
        } else {
            second.mark(--j, Mark::Extra);
        }
    }
}

}  // namespace

PrintedText::PrintedText(std::string const& text, Preparer const& preparer) : length(text.size()) {
    std::u16string whole;
    std::vector<std::size_t> bytes;  // at which each unit begins, and the end
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const begin = at;
        CodePoint const point = nextCodePoint(std::string_view(text), at);
        if (point < 0) throw NotUtf8(begin + 1);
        append(whole, point);
        bytes.resize(whole.size(), begin);
    }
    bytes.push_back(text.size());
    units = preparer.prepared(whole, origins);
    for (Origin& origin : origins)
        origin = {bytes[origin.begin], bytes[origin.end]};
}

Difference differenceOf(PrintedText const& first, PrintedText const& second,
                        reference::SideBySide const& sides) {
    MarkedUnits firstMarks(first, sides.first), secondMarks(second, sides.second);
    align(firstMarks, secondMarks);
    return {firstMarks.spans(), secondMarks.spans()};
}

LeftOvers::LeftOvers(reference::SideBySide const& sides)
    : first(toUtf8(reference::joined(sides.first.left))),
      second(toUtf8(reference::joined(sides.second.left))) {}

Difference LeftOvers::difference() const {
    Preparer const asItIs({});
    PrintedText const one(first, asItIs), other(second, asItIs);
    reference::SideBySide sides = {};
    sides.first = {{one.units}, {one.units}};
    sides.second = {{other.units}, {other.units}};
    return differenceOf(one, other, sides);
}

}  // namespace near_text
