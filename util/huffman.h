/// The byte compressor of saved tools: Huffman codes behind a table of frequencies.
///
/// A block, little-endian: magic 5452234, version 100, symbol count n (at most 256), original
/// length in bytes, as 32-bit numbers; n records of a byte value and its frequency as a 32-bit
/// number; the code bits, from the lowest bit of each byte up. There is no checksum.
#pragma once

#include "util/result.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tvw {

/// More bytes than this no block may expand to.
inline constexpr std::size_t kMaxDecompressedSize = std::size_t{256} << 20;

/// The block of `bytes`. More than kMaxDecompressedSize bytes are returned as they are, which
/// `decompress` passes through.
[[nodiscard]] std::string compress(std::string_view bytes);

/// The bytes of a block. What does not begin as a block does (magic, version, a symbol count of at
/// most 256) is returned as it is: so plain files pass through the same reader. Fails if the block
/// ends within its table or before its original length is reached, or if that length is above
/// kMaxDecompressedSize; memory is taken only as far as the input's bits can fill it, but for a
/// block of a single symbol, which has no bits.
[[nodiscard]] Result<std::string> decompress(std::string_view bytes);

} // namespace tvw
