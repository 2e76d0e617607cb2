#include "host_client/lent_objects.h"

#include "host_client/host_text.h"

namespace host_client {

bool Connection::reportError(unsigned short code, unsigned short const* source,
                             unsigned short const* description, long scode) {
    reports.push_back(
        {code, std::u16string(fromHost(source)), std::u16string(fromHost(description)), scode});
    return true;
}

bool Memory::allocate(void** out, unsigned long size) {
    ++requests;
    lastSize = size;
    if (answer != Answer::Block) return answer == Answer::EmptyClaim;
    // Exactly sized and not zeroed, so that a tool sees each byte written too far or not at all.
    blocks_.push_back(std::make_unique_for_overwrite<unsigned char[]>(size));
    *out = blocks_.back().get();
    return true;
}

}  // namespace host_client
