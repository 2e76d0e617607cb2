#include "near_text/run/run.h"

#include <exception>

#include "near_text/input/text_codec.h"
#include "near_text/matching/longest_text.h"
#include "near_text/messages/interrupt.h"

namespace near_text {

RowUnits::RowUnits(TextRow const& row, Preparer const& preparer, RunSettings const& settings)
    : units(preparer.prepared(lineUnits(row))), isCut(settings.isTruncating && truncate(units)) {}

Status run(Matchers& matchers, Preparer const& preparer,
           std::function<bool(TextRow& row)> const& next, RowWork const& work,
           FailureText const& failureText, MatchWriter& writer) {
    auto const failed = [&](TextRow const& row, std::string const& error) -> LineResult {
        TextRow shown = row;
        writer.dropUnencodable(shown.kept);
        return {failureText(shown, error), error};
    };
    auto const workOn = [&](std::size_t worker, TextRow const& row) {
        LineResult result;
        try {
            RowUnits const text(row, preparer, matchers.settings());
            result = work(matchers[worker], row, text.units);
            result.isCut = text.isCut;
            writer.requireEncodable(result.output);
        } catch (NotText const& error) {
            result = failed(row, error.what());
        } catch (Refused const& error) {
            result = failed(row, error.what());
        }
        result.line = row.number;
        result.share = row.share;
        return result;
    };
    OrderedWork ordered(matchers.size(), workOn, [&](LineResult const& done, bool isMoreReady) {
        return writer.write(done, isMoreReady);
    });
    std::exception_ptr fault;
    try {
        for (TextRow row; signalCaught() == 0 && next(row);) {
            if (!ordered.add(std::move(row))) break;
        }
    } catch (Interrupted const&) {
        // Which `close` tells.
    } catch (...) {
        fault = std::current_exception();
    }
    signalCaught() == 0 ? ordered.finish() : ordered.stop();
    if (fault) std::rethrow_exception(fault);
    return writer.close(matchers.leftOut());
}

}  // namespace near_text
