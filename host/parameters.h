// What each method takes: the type of each of its parameters, in order. The number of parameters
// that the host learns follows from here.
#pragma once

#include <algorithm>
#include <span>

#include "host/component_base.h"

namespace comparer {

inline constexpr VariantTag kStringCompareTags[] = {TagWideString, TagWideString, TagInt32};
inline constexpr VariantTag kStringSearchTags[] = {
    TagWideString, TagWideString, TagWideString, TagInt32, TagInt32, TagInt32, TagWideString};

// By the method's index.
inline constexpr std::span<VariantTag const> kMethodTags[] = {kStringCompareTags,
                                                              kStringSearchTags};

// The one parameter with a default.
inline constexpr long kExclusionsParam = std::size(kStringSearchTags) - 1;

// True when `params`, as many records as there are tags, hold values of these types.
inline bool haveTags(_tVariant const* params, std::span<VariantTag const> tags) {
    return std::equal(tags.begin(), tags.end(), params,
                      [](VariantTag tag, _tVariant const& record) { return record.tag == tag; });
}

}  // namespace comparer
