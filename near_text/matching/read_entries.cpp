#include "near_text/matching/read_entries.h"

#include "near_text/input/text_codec.h"

namespace near_text {

EntryFile readEntries(Source const& source, Preparer const& preparer, bool beginsWithSeparator) {
    RowReader reader(source);
    EntryListBuilder builder(preparer, u'\0');
    if (beginsWithSeparator) builder.beginWithSeparator();
    for (TextRow row; reader.next(row);) {
        try {
            std::u16string const units = lineUnits(row);
            builder.add(row.number, units, row.text, row.kept);
        } catch (NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
    }
    return {builder.take(shownName(source.file.name)), reader.keptNames()};
}

}  // namespace near_text
