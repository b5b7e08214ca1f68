// Changes to drawings, text and binary, that keep them drawings: whole groups and records are
// dropped, doubled, swapped, taken from elsewhere, and values are set to those that break readers.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

// As LLVMFuzzerCustomMutator: changes size bytes at data, which has room for most, and returns the
// new size. Content that is no drawing is left to the driver's own changes.
size_t MutateTags(uint8_t* data, size_t size, size_t most, unsigned seed);

}  // namespace fuzz
