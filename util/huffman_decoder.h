/// Decodes the code bits of a compressed block.
#pragma once

#include "util/huffman_tree.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tvw::detail {

class HuffmanDecoder
{
public:
    /// A tree of at least two leaves, which must outlive this. `length`: how many bytes will be
    /// decoded; fewer get a smaller table, since making it takes time too.
    HuffmanDecoder(const HuffmanTree& tree, std::size_t length);

    /// Fills out[0] to out[length - 1]; false if the code ends before.
    [[nodiscard]] bool decode(std::string_view code, char* out, std::size_t length) const;

private:
    /// What the next tableBits_ bits say: how many of them are whole codes (bits 0 to 7), of how
    /// many symbols (8 to 15), and these symbols (16 to 63). 0 where the first code is longer.
    using Entry = std::uint64_t;

    class Walker;
    struct Stream;
    struct Lookup;
    struct Output;
    struct Window;

    void fillTable();
    [[nodiscard]] static Stream step(Stream stream, Lookup lookup, const Walker& walker);
    bool decodeWindow(const Walker& walker, Window& window, Output& output) const;
    [[nodiscard]] static std::size_t join(const Walker& walker, std::size_t begin, std::size_t end,
                                          Output& output);

    const HuffmanTree& tree_;
    int tableBits_;
    std::vector<Entry> table_;
};

} // namespace tvw::detail
