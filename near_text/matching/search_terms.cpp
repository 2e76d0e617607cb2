#include "near_text/matching/search_terms.h"

#include "near_text/matching/entry_list.h"

namespace near_text {

SearchTerms readTerms(SearchSettings const& settings) {
    std::u16string exclusions;
    if (settings.exclusionsFile) exclusions = readLines(*settings.exclusionsFile);
    exclusions += settings.exclusions;
    return {settings.percentages, settings.threshold, settings.preparer.prepared(exclusions),
            settings.isSameNumbers};
}

}  // namespace near_text
