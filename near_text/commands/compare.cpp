#include <algorithm>

#include "near_text/commands/commands.h"
#include "near_text/input/text_codec.h"
#include "near_text/output/explanation_text.h"
#include "near_text/output/output.h"

namespace near_text {

Status execute(CompareSettings const& settings) {
    auto const component = makeComponent(settings.addIn);
    std::u16string const first = settings.preparer.prepared(settings.first);
    std::u16string const second = settings.preparer.prepared(settings.second);
    auto const isAlike = component->compare(first, second, settings.percent);
    if (!isAlike) {
        bool const isSecond = second.size() > first.size();
        throw std::runtime_error(
            (isSecond ? "SECOND: " : "FIRST: ") +
            refusal(toUtf8(component->lastReport()), std::max(first.size(), second.size())));
    }
    Output output;
    output.write(*isAlike ? "alike\n" : "different\n");
    if (settings.isExplained) {
        auto const sides =
            reference::explainCompare(first, second, static_cast<unsigned long>(settings.percent));
        requireAgreement(sides, *isAlike);
        output.write(explanationText(sides, "first", "second", settings.isColoured));
    }
    output.flush();
    return foundIf(*isAlike);
}

}  // namespace near_text
