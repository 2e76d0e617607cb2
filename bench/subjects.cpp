#include "bench/subjects.h"

#include <cstdlib>
#include <memory>

#include "bench/plain_paths.h"
#include "near_text/input/text_codec.h"

namespace bench {

namespace {

using host_client::numberRecord;
using host_client::textRecord;

struct Library {
    Library(std::string libraryName, char const* file)
        : name(std::move(libraryName)), addIn(file), component(addIn) {}

    std::string name;
    host_client::AddIn addIn;
    host_client::Component component;
};

std::vector<std::unique_ptr<Library>> const& libraries() {
    static auto const all = [] {
        std::vector<std::unique_ptr<Library>> loaded;
        loaded.push_back(std::make_unique<Library>("ours", NEAR_TEXT_LIBRARY));
        if (char const* const file = std::getenv("NEAR_TEXT_BASELINE"); file != nullptr) {
            loaded.push_back(std::make_unique<Library>("baseline", file));
        }
        return loaded;
    }();
    return all;
}

// A call of a library, as often as there are argument lists.
class Calls {
public:
    using Records = std::vector<_tVariant>;

    Calls(Library& library, long method, std::vector<Records> calls)
        : library_(&library), method_(method), calls_(std::move(calls)), results_(calls_.size()) {}

    void run() {
        library_->component.memory.freeAll();
        for (std::size_t i = 0; i < calls_.size(); ++i) {
            results_[i] = {};
            if (!library_->component->CallAsFunc(method_, &results_[i], calls_[i].data(),
                                                 std::ssize(calls_[i]))) {
                throw std::logic_error(near_text::toUtf8(library_->component.lastReport()));
            }
        }
    }

    Answer answer() const {
        Answer all;
        for (auto const& result : results_) {
            if (result.tag == TagBool) {
                all.push_back(result.value.boolean);
            } else {
                auto const list = near_text::toUtf8(
                    host_client::fromHost(result.value.wideString, result.length));
                for (unsigned long const index : host_client::parseIndexList(list))
                    all.push_back(index);
            }
        }
        return all;
    }

private:
    Library* library_;
    long method_;
    std::vector<Records> calls_;
    std::vector<_tVariant> results_;
};

Case caseOfLibraries(long method, std::vector<Calls::Records> const& calls) {
    Case measured;
    for (auto const& library : libraries()) {
        auto const made = std::make_shared<Calls>(*library, method, calls);
        measured.push_back(
            {library->name, [made] { made->run(); }, [made] { return made->answer(); }});
    }
    return measured;
}

void addPlain(Case& measured, std::function<Answer()> const& answer) {
    auto const last = std::make_shared<Answer>();
    measured.push_back(
        {"plain", [last, answer] { *last = answer(); }, [last] { return *last; }, true});
}

// The separator lies in memory of its own, which a record refers to.
std::vector<Calls::Records> searchCalls(SearchArguments const& in, char16_t const& separator) {
    return {{textRecord(in.text), textRecord(in.dictionary), textRecord({&separator, 1}),
             numberRecord(in.lengthThreshold), numberRecord(in.percentShort),
             numberRecord(in.percentLong), textRecord(in.exclusions)}};
}

std::vector<Calls::Records> compareCalls(Pairs const& pairs, int percent) {
    std::vector<Calls::Records> calls;
    for (auto const& [first, second] : pairs)
        calls.push_back({textRecord(first), textRecord(second), numberRecord(percent)});
    return calls;
}

Case attackOf(long method, std::vector<Calls::Records> const& attack,
              std::vector<Calls::Records> const& ordinary) {
    Case measured;
    for (auto const& [name, calls] : {std::pair{"ours", &attack}, {"ordinary", &ordinary}}) {
        auto const made = std::make_shared<Calls>(*libraries().front(), method, *calls);
        measured.push_back({name, [made] { made->run(); }, nullptr});
    }
    return measured;
}

}  // namespace

Case searchCase(SearchArguments const& arguments) {
    auto const separator = std::make_shared<char16_t>(arguments.separator);
    Case measured = caseOfLibraries(1, searchCalls(arguments, *separator));
    addPlain(measured, [arguments, separator] { return plainSearch(arguments); });
    return measured;
}

Case attackCase(SearchArguments const& attack, SearchArguments const& ordinary) {
    static constexpr char16_t kSeparator = u';';
    return attackOf(1, searchCalls(attack, kSeparator), searchCalls(ordinary, kSeparator));
}

Case compareCase(Pairs const& pairs, int percent) {
    Case measured = caseOfLibraries(0, compareCalls(pairs, percent));
    addPlain(measured, [&pairs, percent] { return plainCompare(pairs, percent); });
    return measured;
}

Case attackCase(Pairs const& attack, Pairs const& ordinary, int percent) {
    return attackOf(0, compareCalls(attack, percent), compareCalls(ordinary, percent));
}

Case componentCase() {
    Case measured;
    for (auto const& library : libraries()) {
        measured.push_back({library->name,
                            [&addIn = library->addIn] {
                                host_client::Component const made(addIn);
                                benchmark::DoNotOptimize(&made);
                            },
                            nullptr});
    }
    return measured;
}

}  // namespace bench
