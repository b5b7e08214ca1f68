// What another library needs for the same files.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

// Reads a text and counts its entities; 0 when it cannot.
std::size_t ReadByPeer(const std::string& text);

// Writes so many lines, arcs and polylines by turns to nowhere; 0 when it cannot.
std::size_t WriteByPeer(std::size_t entities);

}  // namespace bench
