// The two objects that a host lends to a component.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "host/component_base.h"

namespace host_client {

struct Report {
    unsigned short code;
    std::u16string source;
    std::u16string description;
    long scode;
};

// Keeps a copy of every report, since the texts die with the call.
class Connection final : public HostConnection {
public:
    void notCalled0() override { std::abort(); }
    void notCalled1() override { std::abort(); }
    bool reportError(unsigned short code, unsigned short const* source,
                     unsigned short const* description, long scode) override;

    std::vector<Report> reports;
};

// Hands out blocks and frees them on request, or else at the end. Can be made to fail in each
// way in which a host may.
class Memory final : public HostMemoryManager {
public:
    enum class Answer { Block, Refusal, EmptyClaim };

    void notCalled0() override { std::abort(); }
    void notCalled1() override { std::abort(); }
    bool allocate(void** out, unsigned long size) override;

    void freeAll() { blocks_.clear(); }

    Answer answer = Answer::Block;
    unsigned long requests = 0;  // so far
    unsigned long lastSize = 0;  // in bytes, of the last request

private:
    std::vector<std::unique_ptr<unsigned char[]>> blocks_;
};

}  // namespace host_client
