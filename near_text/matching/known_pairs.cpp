#include "near_text/matching/known_pairs.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <set>
#include <stdexcept>
#include <unordered_map>

#include "near_text/input/number.h"
#include "near_text/messages/messages.h"

namespace near_text {

namespace {

constexpr char const* kNoDecisions = "no column has the heading decision";

// Whether a name is that word or contains it: text_id, ID 2.
bool hasWord(std::string const& name, std::string const& word) {
    std::string words = " ";
    for (char const c : name)
        words += std::isalnum(static_cast<unsigned char>(c)) != 0
                     ? static_cast<char>(std::tolower(static_cast<unsigned char>(c)))
                     : ' ';
    words += ' ';
    return words.find(' ' + word + ' ') != std::string::npos;
}

bool namesIds(std::string const& name) {
    return hasWord(name, "id") || hasWord(name, "ids");
}

// Not an id of a record, such as "line 7".
bool namesLines(std::string const& name) {
    return (hasWord(name, "line") || hasWord(name, "lines")) &&
           name.find_first_of("0123456789") == std::string::npos;
}

bool namesTexts(std::string const& name) {
    return hasWord(name, "text") || hasWord(name, "texts");
}

bool namesEntries(std::string const& name) {
    return hasWord(name, "entry") || hasWord(name, "entries");
}

bool isLineNumber(std::string const& cell) {
    return parseNumber<std::size_t>(cell, 1).has_value();
}

std::string named(bool isById, std::string const& name) {
    return isById ? "with the id '" + name + '\'' : "in line " + name;
}

using Entries = std::unordered_map<std::string, Indices>;

Entries byName(EntryList const& list, bool isById) {
    Entries entries;
    for (unsigned long index = 0; index < list.entries.size(); ++index) {
        Entry const entry = list.entry(index);
        entries[isById ? entry.id : std::to_string(entry.place)].push_back(index);
    }
    entries.erase("");
    return entries;
}

// 07 and 7 are one line.
std::string nameIn(std::string const& cell, bool isById) {
    return isById ? cell : std::to_string(*parseNumber<std::size_t>(cell));
}

}  // namespace

// One file, a row at a time.
class KnownPairs::Reading {
public:
    Reading(KnownPairs& pairs, TextFile const& file, Entries const& entries)
        : pairs_(pairs),
          entries_(entries),
          isById_{pairs.naming_.hasTextIds, pairs.naming_.hasEntryIds},
          table_(file, {.delimiter = TableLayout::kGuessed}) {
        table_.column("2");
        for (bool isFirst = true; table_.next(row_); isFirst = false) {
            if (!row_.fault.empty()) throw refusal(row_.fault);
            if (isFirst) requireNames();
            if (isFirst && isHeading())
                takeHeading();
            else
                takeRow();
        }
        if (!hasPairs_) throw std::runtime_error(shownName(file.name) + " contains no pairs");
    }

private:
    std::runtime_error refusal(std::string const& reason) const {
        return std::runtime_error(table_.place(row_) + reason);
    }

    void findDecisions() {
        auto const found = std::ranges::find_if(
            row_.fields, [](std::string const& name) { return hasWord(name, "decision"); });
        if (found == row_.fields.end()) return;
        column_ = static_cast<std::size_t>(found - row_.fields.begin());
        table_.column(std::to_string(*column_ + 1));  // each row has to reach so far
    }

    // Of the first row.
    bool isHeading() const {
        for (std::size_t i = 0; i < 2; ++i) {
            std::string const& cell = row_.fields[i];
            if (isById_[i] ? !namesIds(cell) : isLineNumber(cell)) return pairs_.naming_.hasHeader;
        }
        return true;
    }

    // Columns are read by their places, so that what the first row says of them has to agree.
    void requireNames() const {
        for (std::size_t i = 0; i < 2; ++i) {
            std::string const& cell = row_.fields[i];
            if (!isById_[i] && namesIds(cell))
                throw refusal('\'' + cell + "' names ids, but line numbers are read");
            if (isById_[i] && namesLines(cell) && !namesIds(cell))
                throw refusal('\'' + cell + "' names lines, but ids are read");
        }
    }

    void takeHeading() {
        std::string const& text = row_.fields[0];
        std::string const& entry = row_.fields[1];
        bool const isSwapped = (namesEntries(text) && !namesEntries(entry)) ||
                               (namesTexts(entry) && !namesTexts(text));
        if (isSwapped && !pairs_.naming_.isWithin) {
            throw refusal(
                "the first column is read as that of texts, the second as that of "
                "entries, but they are called '" +
                text + "' and '" + entry + '\'');
        }
        findDecisions();
        if (pairs_.naming_.hasDecisions && !column_) throw refusal(kNoDecisions);
    }

    void takeRow() {
        for (std::size_t i = 0; i < 2; ++i) {
            if (isById_[i] && row_.fields[i].empty()) throw refusal("an id is empty");
            if (!isById_[i] && !isLineNumber(row_.fields[i]))
                throw refusal('\'' + row_.fields[i] + "' is not a line number");
        }
        if (pairs_.naming_.hasDecisions && !column_ && row_.fields.size() > 2)
            throw refusal(kNoDecisions);
        // Nobody who writes that means the pair to count.
        if (!column_ && std::ranges::find(row_.fields, "rejected") != row_.fields.end())
            throw refusal("'rejected' is in no column with the heading decision");
        std::string const decision = column_ ? row_.fields[*column_] : "accepted";
        if (!decision.empty() && decision != "accepted" && decision != "rejected")
            throw refusal('\'' + decision + "' is neither accepted nor rejected");
        Indices const& ofSecond = entriesOf(1);
        if (!pairs_.naming_.isWithin) {
            take(nameIn(row_.fields[0], isById_[0]), ofSecond, decision);
            return;
        }
        for (unsigned long const one : entriesOf(0)) {
            for (unsigned long const other : ofSecond) {
                if (one == other) throw refusal("an entry is no pair with itself");
                take(std::to_string(std::min(one, other)), {std::max(one, other)}, decision);
            }
        }
    }

    Indices const& entriesOf(std::size_t column) {
        std::string const name = nameIn(row_.fields[column], isById_[1]);
        auto const found = entries_.find(name);
        if (found == entries_.end()) throw refusal("there is no entry " + named(isById_[1], name));
        if (found->second.size() > 1 && noted_.insert(name).second) {
            complain("note: " + table_.place(row_) + std::to_string(found->second.size()) +
                     " entries have the id '" + name + '\'');
        }
        return found->second;
    }

    void take(std::string const& text, Indices const& entries, std::string const& decision) {
        if (decision.empty()) return;
        hasPairs_ = true;
        Text& known =
            pairs_.texts_.try_emplace(text, Text{pairs_.texts_.size(), table_.place(row_), {}})
                .first->second;
        for (unsigned long const entry : entries)
            known.decisions[entry] = decision == "accepted";
    }

    KnownPairs& pairs_;
    Entries const& entries_;
    bool const isById_[2];
    TableReader table_;
    Row row_;
    std::optional<std::size_t> column_;  // of decisions
    std::set<std::string> noted_;        // ids of several entries
    bool hasPairs_ = false;
};

KnownPairs::KnownPairs(std::vector<TextFile> const& files, Naming naming, EntryList const& list)
    : naming_(naming) {
    Entries const entries = byName(list, naming.hasEntryIds);
    for (TextFile const& file : files)
        Reading(*this, file, entries);
    for (auto const& [name, text] : texts_) {
        auto const accepted = std::count_if(text.decisions.begin(), text.decisions.end(),
                                            [](auto const& decision) { return decision.second; });
        size_ += static_cast<std::size_t>(accepted);
        if (accepted > 0) ++textsInPairs_;
    }
}

std::string KnownPairs::nameOf(TextRow const& row) const {
    return naming_.hasTextIds ? row.id : std::to_string(row.number);
}

bool KnownPairs::isDecided(std::string const& text, unsigned long entry, bool isAccepted) const {
    auto const found = texts_.find(text);
    if (found == texts_.end()) return false;
    auto const decision = found->second.decisions.find(entry);
    return decision != found->second.decisions.end() && decision->second == isAccepted;
}

bool KnownPairs::isAccepted(std::string const& text, unsigned long entry) const {
    return isDecided(text, entry, true);
}

bool KnownPairs::isRejected(std::string const& text, unsigned long entry) const {
    return isDecided(text, entry, false);
}

std::function<bool(unsigned long)> KnownPairs::rejectedOf(TextRow const& row) const {
    if (texts_.find(nameOf(row)) == texts_.end()) return {};
    return [this, name = nameOf(row)](unsigned long entry) { return isRejected(name, entry); };
}

bool KnownPairs::isAcceptedWithin(unsigned long one, unsigned long other) const {
    return isAccepted(std::to_string(std::min(one, other)), std::max(one, other));
}

void KnownPairs::see(TextRow const& row) {
    auto const found = texts_.find(nameOf(row));
    if (found == texts_.end()) return;
    if (++found->second.seen == 2)
        complain("note: several texts have the id '" + found->first + '\'');
}

void KnownPairs::requireAllSeen() const {
    std::pair<std::string const, Text> const* missing = nullptr;
    for (auto const& text : texts_) {
        if (text.second.seen > 0 || (missing != nullptr && missing->second.row < text.second.row))
            continue;
        missing = &text;
    }
    if (missing == nullptr) return;
    throw std::runtime_error(missing->second.place + "there is no text " +
                             named(naming_.hasTextIds, missing->first));
}

}  // namespace near_text
