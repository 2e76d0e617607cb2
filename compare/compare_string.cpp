// The host's first method: are two texts alike?
#include "compare/text_limit.h"
#include "host/near_text_comparer.h"
#include "host/parameters.h"

using namespace comparer;

bool NearTextComparer::compareString(_tVariant const* params, _tVariant* ret) {
    // A negative percentage is a very large one here, and a bad percentage hides a bad length.
    if (!haveTags(params, kStringCompareTags) || params[2].value.uint32 > 100) {
        reportFailure(BadParameters);
        return false;
    }
    _tVariant const& first = params[0];
    _tVariant const& second = params[1];
    unsigned long const percent = params[2].value.uint32;
    if (first.length > kMaxTextLength || second.length > kMaxTextLength) {
        reportFailure(StringTooLong);
        return false;
    }
    std::vector<Utf16String> const exclusions;
    bool const isAlike = distance_.wordInsansitiveCompareStrings(
        first.value.wideString, first.length, second.value.wideString, second.length, percent,
        exclusions);
    ret->value.boolean = isAlike ? 1 : 0;
    ret->tag = TagBool;
    return true;
}
