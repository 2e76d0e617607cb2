#include "near_text/matching/search_terms.h"

#include "near_text/matching/entry_list.h"

namespace near_text {

Preparer readPreparer(SearchSettings const& settings) {
    Preparer preparer = settings.preparer;
    if (settings.dropWordsFile) preparer.drop(readLines(*settings.dropWordsFile));
    return preparer;
}

SearchTerms readTerms(SearchSettings const& settings) {
    std::u16string exclusions;
    if (settings.exclusionsFile) exclusions = readLines(*settings.exclusionsFile);
    exclusions += settings.exclusions;
    return {settings.percentages, settings.threshold, settings.preparer.prepared(exclusions),
            settings.isSameNumbers};
}

}  // namespace near_text
