/// \file
/// Streams of bytes that files are read from.
#pragma once

#include "files/read_error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace tvtool::exchange {

/// Reads the next bytes into the buffer and returns their number; 0 at the end. Throws a
/// files::ReadError.
using Source = std::function<std::size_t(std::span<char> buffer)>;

/// The largest XML text that is read, in bytes.
inline constexpr std::uint64_t largestDescription = std::uint64_t{256} << 20;

} // namespace tvtool::exchange
