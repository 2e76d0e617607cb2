// How the output is written.
#include <nlohmann/json.hpp>

#include "near_text/output/json_writer.h"
#include "tests/random_text.h"

namespace {

// Another library writes the same, whatever the bytes are.
TEST(JsonWriter, QuotesAnyBytes) {
    RandomText random{5};
    std::string const parts[] = {
        "a",        "\"",   "\\",           "\n",       "\x1F",     "\x7F",     "\xC3", "\xA9",
        "\xE2\x82", "\xAC", "\xED\xA0\x80", "\xF0\x9F", "\x98\x80", "\xF4\x90", "\xC0"};
    for (int round = 0; round < 20000; ++round) {
        std::string text(random.oneIn(50) ? 1 : 0, '\0');
        for (std::size_t i = random.below(8); i > 0; --i)
            text += parts[random.below(std::size(parts))];
        near_text::JsonWriter json;
        json.value(text);
        using Json = nlohmann::json;
        ASSERT_EQ(json.take(), Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
    }
}

}  // namespace
