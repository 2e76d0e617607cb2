#include "near_text/matching/read_entries.h"

#include "near_text/input/text_codec.h"

namespace near_text {

namespace {

EntryFile read(Source const& source, EntryListBuilder& builder) {
    RowReader reader(source);
    if (!source.id.empty()) builder.keepIds();
    for (TextRow row; reader.next(row);) {
        try {
            std::u16string const units = lineUnits(row);
            builder.add(row.number, units, row.text, row.kept, u'\0', row.id);
        } catch (NotText const& error) {
            throw std::runtime_error(reader.place() + error.what());
        }
    }
    return {builder.take(shownName(source.file.name)), reader.keptNames()};
}

}  // namespace

EntryFile readEntries(Source const& source, Preparer const& preparer) {
    EntryListBuilder builder(preparer, u'\0');
    return read(source, builder);
}

EntryFile readOneList(Source const& source, Preparer const& preparer, bool isTruncating) {
    EntryListBuilder builder(preparer, u'\0');
    builder.beginWithSeparator();
    if (isTruncating) builder.cutEntries();
    return read(source, builder);
}

}  // namespace near_text
