// The result of a search as text: decimal numbers joined by commas, in a block that the host owns.
//
// The block is sized before it is asked for, and filled by way of the number stream, some numbers
// at a time. The stream is written from its beginning each time: it would pile up every digit that
// it ever held, and digits left unread by a call that ran out of memory would come before the next
// one's.
#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <span>

#include "host/near_text_comparer.h"
#include "host/text_width.h"
#include "search/index_list.h"

using namespace comparer;

namespace {

constexpr wchar_t kComma = L',';
constexpr unsigned long kNumbersHeld = 64;  // at a time, by the stream
constexpr unsigned long kMaxDigits = std::numeric_limits<unsigned long>::digits10 + 1;

// Writes the numbers, a comma behind each, over what the stream last held, and gives the number of
// characters. Emptying the stream would, where a compiler inlines it, refer to a newer symbol than
// any other here.
std::streamoff hold(std::basic_stringstream<wchar_t>& stream,
                    std::span<unsigned long const> numbers) {
    stream.clear();
    stream.seekp(0);
    stream.seekg(0);
    // Much less work than a << for each number and comma.
    auto const& digits = std::use_facet<std::num_put<wchar_t>>(stream.getloc());
    std::ostreambuf_iterator<wchar_t> to(stream);
    for (unsigned long const number : numbers) {
        to = digits.put(to, stream, L' ', number);
        *to = kComma;
    }
    return stream.tellp();
}

// True when the manager put a block into `*out`. One that claims success and touches nothing must
// not have us write through whatever the host's record held, so the record is empty meanwhile.
bool allocateResult(HostMemoryManager* manager, _tVariant::Value& out, unsigned long bytes) {
    if (manager == nullptr) return false;
    auto* const held = out.wideString;
    out.wideString = nullptr;
    bool const isDone = manager->allocate(reinterpret_cast<void**>(&out.wideString), bytes);
    if (out.wideString != nullptr) return isDone;
    out.wideString = held;
    return false;
}

}  // namespace

bool NearTextComparer::createReturnString(_tVariant* ret,
                                          std::vector<unsigned long> const& indices) {
    unsigned long const total = unitsOfList(indices.size(), [&indices](unsigned long number) {
        auto const from = std::lower_bound(indices.begin(), indices.end(), number);
        return static_cast<unsigned long>(indices.end() - from);
    });
    if (total - 1 > std::numeric_limits<decltype(ret->length)>::max() ||
        !allocateResult(memManager_, ret->value, total * sizeof(unsigned short))) {
        reportFailure(InternalError);
        return false;
    }
    unsigned short* const text = ret->value.wideString;
    std::array<wchar_t, kNumbersHeld*(kMaxDigits + 1)> wide;
    unsigned long end = 0;
    for (unsigned long i = 0; i < indices.size(); i += kNumbersHeld) {
        auto const some = std::span(indices).subspan(i, std::min(kNumbersHeld, indices.size() - i));
        std::streamoff const held = hold(numberStream_, some);
        numberStream_.read(wide.data(), held);
        auto const units = static_cast<unsigned long>(held);
        narrowInto(text + end, wide.data(), units);
        end += units;
    }
    assert(end == total);
    text[total - 1] = 0;
    ret->length = static_cast<std::uint32_t>(total - 1);
    return true;
}
