#include "host_client/library_file.h"
#include "near_text/commands/commands.h"
#include "near_text/input/text_codec.h"
#include "near_text/messages/messages.h"
#include "near_text/output/columns.h"

namespace near_text {

namespace {

std::string tableText(std::vector<Cells> const& rows) {
    return inColumns(rows, std::vector<bool>(rows.front().size(), false));
}

std::string shownDefault(_tVariant const& value) {
    switch (value.tag) {
        case TagEmpty:
            return "empty";
        case TagInt32:
            return std::to_string(value.value.int32);
        case TagBool:
            return value.value.boolean != 0 ? "true" : "false";
        case TagWideString:
            return '"' + toUtf8(host_client::fromHost(value.value.wideString, value.length)) + '"';
        default:
            return "tag " + std::to_string(value.tag);
    }
}

std::string shownDefaults(host_client::Component& component, long method) {
    std::string text;
    for (long i = 0; i < component->GetNParams(method); ++i) {
        _tVariant value = host_client::garbageRecord();
        if (!component->GetParamDefValue(method, i, &value)) continue;
        text += (text.empty() ? "" : ", ") + std::string("parameter ") + std::to_string(i) + ": " +
                shownDefault(value);
    }
    return text.empty() ? "-" : text;
}

std::string orDash(unsigned short const* name) {
    std::string const text = toUtf8(host_client::fromHost(name));
    return text.empty() ? "-" : text;
}

std::vector<Cells> methodRows(host_client::Component& component) {
    std::vector<Cells> rows = {
        {"index", "method", "second name", "parameters", "result", "defaults"}};
    for (long i = 0; i < component->GetNMethods(); ++i) {
        rows.push_back({std::to_string(i), orDash(component->GetMethodName(i, 0)),
                        orDash(component->GetMethodName(i, 1)),
                        std::to_string(component->GetNParams(i)),
                        component->HasRetVal(i) ? "yes" : "no", shownDefaults(component, i)});
    }
    return rows;
}

std::vector<Cells> propertyRows(host_client::Component& component) {
    std::vector<Cells> rows = {{"index", "property", "second name", "readable", "writable"}};
    for (long i = 0; i < component->GetNProps(); ++i) {
        rows.push_back({std::to_string(i), orDash(component->GetPropName(i, 0)),
                        orDash(component->GetPropName(i, 1)),
                        component->IsPropReadable(i) ? "yes" : "no",
                        component->IsPropWritable(i) ? "yes" : "no"});
    }
    return rows;
}

// An old library, or one that another linker wrote, does its work without a version.
std::string versionOrDash(std::filesystem::path const& library, Status& status) {
    try {
        return onOneLine(host_client::libraryVersion(library));
    } catch (std::runtime_error const& error) {
        complain(error.what());
        status = Status::Error;
        return "-";
    }
}

}  // namespace

Status execute(DescribeSettings const& settings) {
    Status status = Status::Found;
    host_client::AddIn const& addIn = loadedAddIn(settings.addIn);
    auto const component = makeComponent(settings.addIn);
    unsigned short* extension = nullptr;
    (*component)->RegisterExtensionAs(&extension);
    Output output;
    output.write(tableText({{"library", addIn.path.string()},
                            {"version", versionOrDash(settings.addIn.library, status)},
                            {"class", orDash(addIn.getClassNames())},
                            {"extension", orDash(extension)},
                            {"interface", std::to_string((*component)->GetInfo())}}));
    output.write('\n' + tableText(methodRows(*component)));
    output.write('\n' + tableText(propertyRows(*component)));
    output.flush();
    return status;
}

}  // namespace near_text
