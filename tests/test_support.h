// What the tests share: the add-in loaded once, components to call with raw records, files that go
// when the tests have run, and text written shortly.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "compare/utf16_string.h"
#include "host_client/component.h"
#include "near_text/input/text_codec.h"

using host_client::Component;
using host_client::fromHost;
using host_client::hostUnits;
using host_client::numberRecord;
using host_client::SearchArguments;
using host_client::textRecord;
using Text = std::u16string_view;

// Where each round takes many times as long, fewer do.
constexpr int roundsOf(int rounds) {
#ifdef NEAR_TEXT_SANITIZED
    return (rounds + 4) / 5;
#else
    return rounds;
#endif
}

inline host_client::AddIn& addIn() {
    // Never unloaded: its class name is for the life of the process, and else would count as a
    // leak.
    static auto& library = *new host_client::AddIn(NEAR_TEXT_LIBRARY);
    return library;
}

class WithComponent : public testing::Test {
protected:
    Component component{addIn()};
};

inline Utf16String units(std::u16string_view text) {
    return {text.begin(), text.end()};
}

// A literal with its NULs.
template <std::size_t N>
constexpr std::u16string_view whole(char16_t const (&text)[N]) {
    return {text, N - 1};
}

// The path of a file with this content, in a folder of this process.
inline std::string fileOf(std::string const& name, std::string const& content) {
    static struct Folder {
        std::string path = testing::TempDir() + "near_text_" + std::to_string(getpid()) + '/';
        Folder() { std::filesystem::create_directories(path); }
        ~Folder() { std::filesystem::remove_all(path); }
    } const folder;
    std::ofstream(folder.path + name, std::ios::binary) << content;
    return folder.path + name;
}

inline std::string contentOf(std::string const& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}
