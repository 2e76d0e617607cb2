// References into text that somebody else owns, and the sets of words built from them.
//
// A search copies no text: an input, a section of it and a word are all a pointer, a length and an
// ordinal in a shared record. Copies of a handle share the record, and the last one frees it; the
// text stays the host's, which keeps it alive and unchanged while any reference into it exists.
// Handles belong to one call on one thread.
//
// The record of a reference is filled when it is made and never written again, so sharing one
// shares a constant; a section is filled before its handle is copied.
#pragma once

#include <memory>
#include <set>
#include <utility>

template <class Unit, class Length>
struct PStringRefPrivate {
    Unit const* text = nullptr;  // null in a default reference alone
    Length length = 0;           // in units; of a section, its counter: see mark_input.h
    int ordinal = -1;            // of a word, its place among the words of its section, from 0
};

// Compares at most `limit` units of two texts: 1, 0 or -1. Folds no case. A NUL in either ends the
// comparison with 0, so a text equals any longer one that begins with it.
int wcstrncmp_nocase(unsigned short const* first, unsigned short const* second,
                     unsigned long limit);

template <class Unit>
class PStringRef {
public:
    using Length = unsigned long;

    PStringRef() : record_(std::make_shared<Record>()) {}
    PStringRef(Unit const* text, Length length, int ordinal = -1)
        : record_(std::make_shared<Record>(Record{text, length, ordinal})) {}

    Unit const* text() const { return record_->text; }
    Length length() const { return record_->length; }
    int ordinal() const { return record_->ordinal; }

    // Shorter before longer, then by units; the ordinal takes no part. Two references of which
    // neither stands before the other are the same word, wherever they lie.
    friend bool operator<(PStringRef const& a, PStringRef const& b) {
        if (a.text() == nullptr && b.text() == nullptr) return false;
        if (a.length() != b.length()) return a.length() < b.length();
        return wcstrncmp_nocase(a.text(), b.text(), a.length()) < 0;
    }

private:
    using Record = PStringRefPrivate<Unit, Length>;

    std::shared_ptr<Record const> record_;
};

// The distinct words of a text, shortest first. Every member has a text, a length of at least 1, an
// ordinal of its own and no NUL within its length. Of a word that comes twice the first is kept.
using WordSet = std::set<PStringRef<unsigned short>>;

struct PStringRefSectionPrivate {
    PStringRef<unsigned short> reference;
    WordSet words;
};

// One section of an input: its reference and its words.
class PStringRefSection {
public:
    PStringRefSection() : record_(std::make_shared<PStringRefSectionPrivate>()) {}

    void setReference(PStringRef<unsigned short> reference) {
        record_->reference = std::move(reference);
    }
    void setWords(WordSet words) { record_->words = std::move(words); }

    PStringRef<unsigned short> const& reference() const { return record_->reference; }
    WordSet const& words() const { return record_->words; }

private:
    std::shared_ptr<PStringRefSectionPrivate> record_;
};
