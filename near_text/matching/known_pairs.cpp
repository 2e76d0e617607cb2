#include "near_text/matching/known_pairs.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <unordered_map>

#include "near_text/input/number.h"
#include "near_text/messages/messages.h"

namespace near_text {

namespace {

// "id", or a name with that word in it: text_id, ID 2.
bool namesIds(std::string const& name) {
    std::string words = " ";
    for (char const c : name)
        words += std::isalnum(static_cast<unsigned char>(c)) != 0
                     ? static_cast<char>(std::tolower(static_cast<unsigned char>(c)))
                     : ' ';
    words += ' ';
    return words.find(" id ") != std::string::npos || words.find(" ids ") != std::string::npos;
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
        Entry const& entry = list.entries[index];
        entries[isById ? entry.kept[0] : std::to_string(entry.place)].push_back(index);
    }
    entries.erase("");
    return entries;
}

// 07 and 7 are one line.
std::string nameIn(std::string const& cell, bool isById) {
    return isById ? cell : std::to_string(*parseNumber<std::size_t>(cell));
}

}  // namespace

KnownPairs::KnownPairs(TextFile const& file, Naming naming, EntryList const& list)
    : naming_(naming), file_(shownName(file.name)) {
    TableReader table(file, {.delimiter = TableLayout::kGuessed, .hasHeader = naming.hasHeader});
    table.column("2");
    read(table, list);
    for (auto& [name, text] : texts_) {
        std::sort(text.entries.begin(), text.entries.end());
        text.entries.erase(std::unique(text.entries.begin(), text.entries.end()),
                           text.entries.end());
        size_ += text.entries.size();
    }
    if (texts_.empty()) throw std::runtime_error(file_ + " contains no pairs");
}

void KnownPairs::read(TableReader& table, EntryList const& list) {
    Entries const entries = byName(list, naming_.hasEntryIds);
    bool const isByIds[] = {naming_.hasTextIds, naming_.hasEntryIds};
    bool isFirst = true;
    for (Row row; table.next(row); isFirst = false) {
        auto const refusal = [&](std::string const& reason) {
            return std::runtime_error(table.place(row) + reason);
        };
        if (!row.fault.empty()) throw refusal(row.fault);
        bool namesNothing = isFirst;
        for (std::size_t i = 0; i < 2; ++i) {
            std::string const& cell = row.fields[i];
            namesNothing &= isByIds[i] ? namesIds(cell) : !isLineNumber(cell);
            if (isFirst && !isByIds[i] && namesIds(cell))
                throw refusal('\'' + cell + "' names ids, but line numbers are read");
        }
        if (namesNothing) continue;
        for (std::size_t i = 0; i < 2; ++i) {
            if (isByIds[i] && row.fields[i].empty()) throw refusal("an id is empty");
            if (!isByIds[i] && !isLineNumber(row.fields[i]))
                throw refusal('\'' + row.fields[i] + "' is not a line number");
        }
        auto const found = [&](std::size_t column) -> Indices const& {
            std::string const name = nameIn(row.fields[column], naming_.hasEntryIds);
            auto const at = entries.find(name);
            if (at == entries.end())
                throw refusal("there is no entry " + named(naming_.hasEntryIds, name));
            if (at->second.size() > 1) {
                complain("note: " + table.place(row) + std::to_string(at->second.size()) +
                         " entries have the id '" + name + '\'');
            }
            return at->second;
        };
        if (!naming_.isWithin) {
            add(nameIn(row.fields[0], naming_.hasTextIds), row.line, found(1));
            continue;
        }
        for (unsigned long const one : found(0)) {
            for (unsigned long const other : found(1)) {
                if (one == other) throw refusal("an entry is no pair with itself");
                add(std::to_string(std::min(one, other)), row.line, {std::max(one, other)});
            }
        }
    }
}

void KnownPairs::add(std::string const& text, std::size_t line, Indices const& entries) {
    Indices& known = texts_.try_emplace(text, Text{line, {}}).first->second.entries;
    known.insert(known.end(), entries.begin(), entries.end());
}

std::string KnownPairs::nameOf(TextRow const& row) const {
    if (!naming_.hasTextIds) return std::to_string(row.number);
    return row.kept.empty() ? std::string() : row.kept[0];
}

bool KnownPairs::contains(std::string const& text, unsigned long entry) const {
    auto const found = texts_.find(text);
    return found != texts_.end() &&
           std::binary_search(found->second.entries.begin(), found->second.entries.end(), entry);
}

bool KnownPairs::containsWithin(unsigned long one, unsigned long other) const {
    return contains(std::to_string(std::min(one, other)), std::max(one, other));
}

void KnownPairs::see(TextRow const& row) {
    auto const found = texts_.find(nameOf(row));
    if (found == texts_.end()) return;
    if (++found->second.seen == 2)
        complain("note: several texts have the id '" + found->first + '\'');
}

void KnownPairs::requireAllSeen() const {
    Text const* missing = nullptr;
    std::string name;
    for (auto const& [key, text] : texts_) {
        if (text.seen > 0 || (missing != nullptr && missing->line < text.line)) continue;
        missing = &text;
        name = key;
    }
    if (missing == nullptr) return;
    throw std::runtime_error(placeOf(file_, missing->line) + "there is no text " +
                             named(naming_.hasTextIds, name));
}

}  // namespace near_text
