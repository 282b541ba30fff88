#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace wendmark {

/// SHA-256 of bytes that come piece by piece.
class Digest final {
public:
    void add(std::string_view bytes);

    /// The digest as 64 lower-case hexadecimal digits. Nothing may be added afterwards.
    std::string finish();

private:
    void addBlock(const unsigned char* block);

    std::array<std::uint32_t, 8> m_state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                            0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, 64> m_pending{};
    std::size_t m_pendingSize = 0;
    std::uint64_t m_size = 0; ///< Bytes added so far.
};

std::string digestOf(std::string_view bytes);

} // namespace wendmark
