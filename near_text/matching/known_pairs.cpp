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

using Entries = std::unordered_map<std::string, std::vector<unsigned long>>;

Entries byName(EntryList const& list, bool isById) {
    Entries entries;
    for (unsigned long index = 0; index < list.entries.size(); ++index) {
        Entry const entry = list.entry(index);
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
            if (!isByIds[i] && !isLineNumber(row.fields[i]))
                throw refusal('\'' + row.fields[i] + "' is not a line number");
        }
        std::string const name = nameIn(row.fields[1], naming_.hasEntryIds);
        auto const found = entries.find(name);
        if (found == entries.end())
            throw refusal("there is no entry " + named(naming_.hasEntryIds, name));
        if (found->second.size() > 1) {
            complain("note: " + table.place(row) + std::to_string(found->second.size()) +
                     " entries have the id '" + name + '\'');
        }
        Text& text =
            texts_.try_emplace(nameIn(row.fields[0], naming_.hasTextIds), Text{row.line, {}})
                .first->second;
        text.entries.insert(text.entries.end(), found->second.begin(), found->second.end());
    }
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
