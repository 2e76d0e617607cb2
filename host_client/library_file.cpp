// The loader tells what is wrong with a file, but for two: it calls one for another machine "not
// found", and one that ends early ends the process too, once a page that is missing is touched. An
// ELF file begins with a header that says where two tables are: the segments that are loaded, and
// the sections, which linkers write last.
#include "host_client/library_file.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>

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

[[noreturn]] void fail(std::string const& message) {
    // Files are opened without throwing that.
    if (message.ends_with(std::strerror(ENOMEM))) throw std::bad_alloc();
    throw std::runtime_error(message);
}

[[noreturn]] void fail(std::filesystem::path const& file, std::string const& why) {
    fail(file.string() + ": " + why);
}

template <class Record>
bool read(std::ifstream& stream, std::uintmax_t offset, Record& record) {
    stream.seekg(static_cast<std::streamoff>(offset));
    return static_cast<bool>(stream.read(reinterpret_cast<char*>(&record), sizeof record));
}

// Whether all that the header and its table speak of is there.
bool isWhole(std::ifstream& stream, Elf64_Ehdr const& header, std::uintmax_t size) {
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        Elf64_Phdr segment;
        if (!read(stream, header.e_phoff + i * sizeof segment, segment)) return false;
        if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset) return false;
    }
    std::uintmax_t const sections = std::uintmax_t{header.e_shnum} * header.e_shentsize;
    return header.e_shoff <= size && sections <= size - header.e_shoff;
}

// The content of the package note among `notes`: each is a header, the owner's name and the
// content, both padded to `alignment`.
std::optional<std::string> packageNote(std::string_view notes, std::size_t alignment) {
    auto const take = [&](std::size_t length) {
        std::string_view const taken = notes.substr(0, length);
        std::size_t const padded = (length + alignment - 1) / alignment * alignment;
        notes.remove_prefix(std::min(padded, notes.size()));
        return taken;
    };
    Elf64_Nhdr note;
    while (notes.size() >= sizeof note) {
        std::memcpy(&note, take(sizeof note).data(), sizeof note);
        std::string_view const owner = take(note.n_namesz);
        std::string_view const content = take(note.n_descsz);
        if (note.n_type == kPackageNote && owner == kPackageOwner) {
            return std::string(content.substr(0, content.find('\0')));
        }
    }
    return {};
}

struct NoteSearch {
    link_map const* library;
    std::optional<std::string> found;
};

int searchNote(dl_phdr_info* loaded, std::size_t, void* search) {
    auto& [library, found] = *static_cast<NoteSearch*>(search);
    if (loaded->dlpi_addr != library->l_addr) return 0;
    for (int i = 0; i < loaded->dlpi_phnum && !found; ++i) {
        ElfW(Phdr) const& segment = loaded->dlpi_phdr[i];
        if (segment.p_type != PT_NOTE) continue;
        // The loader tells addresses as numbers.
        auto const* const begin =
            reinterpret_cast<char const*>(  // NOLINT(performance-no-int-to-ptr)
                loaded->dlpi_addr + segment.p_vaddr);
        found = packageNote({begin, segment.p_memsz}, segment.p_align == 8 ? 8 : 4);
    }
    return 1;
}

}  // namespace

void* loadLibrary(std::filesystem::path const& file) {
    std::error_code error;
    bool const isFile = is_regular_file(file, error);
    if (error) fail(file, error.message());
    if (!isFile) fail(file, "is not a file");
    Elf64_Ehdr header = {};
    std::ifstream stream(file, std::ios::binary);
    if (!stream) fail(file, std::strerror(errno));
    bool const hasHeader = read(stream, 0, header);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) fail(file, "is not a shared library");
    // This process is an example of what the machine runs.
    Elf64_Ehdr own = {};
    std::ifstream self("/proc/self/exe", std::ios::binary);
    read(self, 0, own);
    bool const isSameOrder = header.e_ident[EI_DATA] == own.e_ident[EI_DATA];
    if (hasHeader && isSameOrder && header.e_machine != own.e_machine) {
        fail(file, "is for another machine: " + machineName(header.e_machine) + ", not " +
                       machineName(own.e_machine));
    }
    bool const isReadable = isSameOrder && header.e_ident[EI_CLASS] == own.e_ident[EI_CLASS];
    if (!hasHeader || (isReadable && !isWhole(stream, header, file_size(file)))) {
        fail(file, "is cut off");
    }
    std::string const path = absolute(file);
    auto const load = [&] { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); };
    void* handle = load();
    // Where memory was missing the loader may say anything, even that there is no such file. What
    // it says again is so.
    if (handle == nullptr) handle = load();
    if (handle == nullptr) {
        std::string const reason = dlerror();
        if (reason.starts_with(path)) fail(reason);
        fail(file, "cannot be loaded: " + reason);  // for the want of another
    }
    return handle;
}

std::string libraryVersion(std::filesystem::path const& file) {
    void* const handle = loadLibrary(file);
    NoteSearch search = {};
    dlinfo(handle, RTLD_DI_LINKMAP, &search.library);
    dl_iterate_phdr(searchNote, &search);
    dlclose(handle);
    if (!search.found) fail(file, "has no package note, and so no version");
    auto const package = nlohmann::json::parse(*search.found, nullptr, false);
    if (!package.is_object() || !package.contains("version") || !package["version"].is_string()) {
        fail(file, "has a package note without a version");
    }
    return package["version"];
}

}  // namespace host_client
