#include "bench/bench_texts.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "near_text/input/text_codec.h"

namespace bench {

namespace {

constexpr std::u16string_view kLatin[] = {u"a",   u"be",  u"con", u"de", u"e",   u"for", u"gra",
                                          u"in",  u"ker", u"la",  u"le", u"men", u"mi",  u"no",
                                          u"o",   u"per", u"pro", u"ra", u"re",  u"ri",  u"s",
                                          u"ste", u"ta",  u"ter", u"ti", u"un",  u"va",  u"y"};
constexpr std::u16string_view kCyrillic[] = {u"а",  u"бо",  u"ва",  u"го", u"де",  u"ени", u"за",
                                             u"и",  u"ка",  u"ко",  u"ла", u"ли",  u"ма",  u"на",
                                             u"не", u"о",   u"пер", u"по", u"при", u"ра",  u"ро",
                                             u"ск", u"ста", u"та",  u"то", u"у",   u"ция", u"ы"};

using Engine = std::mt19937;

std::size_t below(Engine& engine, std::size_t end) {
    return engine() % end;
}

std::u16string makeWord(Engine& engine, bool isCyrillic) {
    std::u16string word;
    for (std::size_t syllables = 2 + below(engine, 4); syllables > 0; --syllables) {
        word += isCyrillic ? kCyrillic[below(engine, std::size(kCyrillic))]
                           : kLatin[below(engine, std::size(kLatin))];
    }
    return word;
}

// A list of words of which the r-th is used about 1 / (r + 3) as often as the first.
class Vocabulary {
public:
    Vocabulary(bool isCyrillic, unsigned seed) : engine(seed) {
        constexpr std::size_t kWords = 12'000;
        std::vector<double> weights;
        for (std::size_t rank = 0; rank < kWords; ++rank) {
            words_.push_back(makeWord(engine, isCyrillic));
            weights.push_back(1.0 / (static_cast<double>(rank) + 3.0));
        }
        pick_ = std::discrete_distribution<std::size_t>(weights.begin(), weights.end());
    }

    std::u16string const& next() { return words_[pick_(engine)]; }

    Engine engine;

private:
    std::vector<std::u16string> words_;
    std::discrete_distribution<std::size_t> pick_;
};

// Three entries out of ten are Russian; some hold a size or an article number.
std::vector<std::u16string> makeEntries(std::size_t count) {
    Vocabulary latin(false, 1);
    Vocabulary cyrillic(true, 2);
    Engine& engine = latin.engine;
    std::vector<std::u16string> made;
    while (made.size() < count) {
        Vocabulary& vocabulary = below(engine, 10) < 3 ? cyrillic : latin;
        std::u16string entry;
        for (std::size_t words = 4 + below(engine, 9); words > 0; --words) {
            if (!entry.empty()) entry += u' ';
            if (below(engine, 8) == 0) {
                entry += near_text::toUnits(std::to_string(below(engine, 2000)));
            } else {
                entry += vocabulary.next();
            }
        }
        made.push_back(entry);
    }
    return made;
}

std::vector<std::u16string> readEntries(char const* file) {
    std::ifstream in(file);
    std::vector<std::u16string> read;
    for (std::string line; std::getline(in, line);) {
        auto entry = near_text::toUnits(line);
        std::replace(entry.begin(), entry.end(), u';', u',');
        if (entry.find_first_not_of(u" \t\r") != std::u16string::npos) read.push_back(entry);
    }
    if (read.empty()) throw std::runtime_error(std::string("no entries in ") + file);
    return read;
}

}  // namespace

std::vector<std::u16string> entries(std::size_t count) {
    char const* const file = std::getenv("NEAR_TEXT_ENTRIES");
    static auto const all = file != nullptr ? readEntries(file) : makeEntries(1'000'000);
    std::vector<std::u16string> some;
    some.reserve(count);
    while (some.size() < count)
        some.push_back(all[some.size() % all.size()]);
    return some;
}

std::u16string join(std::vector<std::u16string> const& entries) {
    std::u16string joined;
    for (auto const& entry : entries) {
        if (!joined.empty()) joined += u';';
        joined += entry;
    }
    return joined;
}

std::u16string text(std::size_t length, bool isCyrillic, unsigned seed) {
    Vocabulary vocabulary(isCyrillic, seed);
    std::u16string text;
    while (text.size() < length)
        text += vocabulary.next() + u' ';
    text.resize(length);
    return text;
}

std::u16string mistyped(std::u16string text, std::size_t every, unsigned seed) {
    Engine engine(seed);
    for (std::size_t i = text.size() / every + 1; i > 0; --i) {
        char16_t const unit = text[below(engine, text.size())];
        if (unit != u' ') text[below(engine, text.size())] = unit;
    }
    return text;
}

}  // namespace bench
