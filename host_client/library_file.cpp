// An ELF file begins with a header that says where two tables are: the program headers, one for
// each segment that is loaded or read, and the section headers, which linkers write last. A file is
// whole when it reaches as far as both tables and every segment say. Notes lie in segments of their
// own: a header, the owner's name and the content, one note after the other, each part padded.
#include "host_client/library_file.h"

#include <elf.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

namespace host_client {

namespace {

// The note that distributions agreed on: JSON with the package's name and version.
constexpr Elf64_Word kPackageNote = 0xCAFE1A7E;
constexpr std::string_view kPackageOwner("FDO\0", 4);

std::string machineName(Elf64_Half machine) {
    switch (machine) {
        case EM_386:
            return "32-bit x86";
        case EM_X86_64:
            return "x86-64";
        case EM_ARM:
            return "32-bit Arm";
        case EM_AARCH64:
            return "64-bit Arm";
        case EM_RISCV:
            return "RISC-V";
        default:
            return "number " + std::to_string(machine);
    }
}

class ElfFile {
public:
    explicit ElfFile(std::filesystem::path const& file) : path_(file.string()) {
        std::error_code error;
        bool const isFile = is_regular_file(file, error);
        if (error) fail(error.message());
        if (!isFile) fail("is not a file");
        stream_.open(file, std::ios::binary);
        if (!stream_) fail(std::strerror(errno));
        size_ = file_size(file);
        if (size_ < SELFMAG || bytes(0, SELFMAG) != ELFMAG) fail("is not a shared library");
        header_ = at<Elf64_Ehdr>(0);
    }

    [[noreturn]] void fail(std::string const& why) const {
        throw std::runtime_error(path_ + ": " + why);
    }

    Elf64_Ehdr const& header() const { return header_; }

    // Fails when the file does not reach so far.
    void reach(std::uintmax_t offset, std::uintmax_t length) const {
        if (offset > size_ || length > size_ - offset) fail("is cut off");
    }

    std::vector<Elf64_Phdr> segments() {
        std::vector<Elf64_Phdr> all;
        for (unsigned i = 0; i < header_.e_phnum; ++i) {
            reach(header_.e_phoff, 0);
            all.push_back(at<Elf64_Phdr>(header_.e_phoff + i * sizeof(Elf64_Phdr)));
        }
        return all;
    }

    std::string bytes(std::uintmax_t offset, std::uintmax_t length) {
        reach(offset, length);
        std::string content(length, '\0');
        stream_.seekg(static_cast<std::streamoff>(offset));
        if (!stream_.read(content.data(), static_cast<std::streamsize>(length))) {
            fail("cannot be read");
        }
        return content;
    }

private:
    template <class Record>
    Record at(std::uintmax_t offset) {
        Record record;
        std::memcpy(&record, bytes(offset, sizeof record).data(), sizeof record);
        return record;
    }

    std::string path_;
    std::ifstream stream_;
    std::uintmax_t size_ = 0;
    Elf64_Ehdr header_ = {};
};

void check(ElfFile& file) {
    // This process is an example of what the machine runs.
    Elf64_Ehdr const own = ElfFile("/proc/self/exe").header();
    Elf64_Ehdr const& header = file.header();
    if (header.e_ident[EI_DATA] != own.e_ident[EI_DATA]) {
        file.fail("is for a machine of another byte order");
    }
    if (header.e_machine != own.e_machine || header.e_ident[EI_CLASS] != own.e_ident[EI_CLASS]) {
        file.fail("is for another machine: " + machineName(header.e_machine) + ", not " +
                  machineName(own.e_machine));
    }
    if (header.e_type != ET_DYN || header.e_phentsize != sizeof(Elf64_Phdr)) {
        file.fail("is not a shared library");
    }
    for (Elf64_Phdr const& segment : file.segments()) {
        file.reach(segment.p_offset, segment.p_filesz);
    }
    file.reach(header.e_shoff, std::uintmax_t{header.e_shnum} * header.e_shentsize);
}

// The content of the package note among `notes`, if there is one.
std::optional<std::string> packageNote(std::string_view notes, std::size_t alignment) {
    auto const take = [&](std::size_t length) {
        std::string_view const taken = notes.substr(0, length);
        std::size_t const padded = (length + alignment - 1) / alignment * alignment;
        notes.remove_prefix(std::min(padded, notes.size()));
        return taken;
    };
    Elf64_Nhdr note;
    while (notes.size() >= sizeof note) {
        std::memcpy(&note, notes.data(), sizeof note);
        notes.remove_prefix(sizeof note);
        std::string_view const owner = take(note.n_namesz);
        std::string_view const content = take(note.n_descsz);
        if (note.n_type == kPackageNote && owner == kPackageOwner) {
            return std::string(content.substr(0, content.find('\0')));
        }
    }
    return {};
}

}  // namespace

void checkLibraryFile(std::filesystem::path const& path) {
    ElfFile file(path);
    check(file);
}

std::string libraryVersion(std::filesystem::path const& path) {
    ElfFile file(path);
    check(file);
    for (Elf64_Phdr const& segment : file.segments()) {
        if (segment.p_type != PT_NOTE) continue;
        auto const note = packageNote(file.bytes(segment.p_offset, segment.p_filesz),
                                      segment.p_align == 8 ? 8 : 4);
        if (!note) continue;
        auto const package = nlohmann::json::parse(*note, nullptr, false);
        if (!package.is_object() || !package.contains("version") ||
            !package["version"].is_string()) {
            file.fail("has a package note without a version");
        }
        return package["version"];
    }
    file.fail("has no package note, and so no version");
}

}  // namespace host_client
