#include "base/Digest.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace wendmark {

namespace {

constexpr std::size_t blockSize = 64;

/// The first 32 bits of the fractions of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> roundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using Schedule = std::array<std::uint32_t, 64>;

Schedule scheduleOf(const unsigned char* block) {
    Schedule words{};
    for (std::size_t i = 0; i < 16; ++i) {
        for (std::size_t byte = 0; byte < 4; ++byte)
            words[i] = words[i] << 8 | block[4 * i + byte];
    }
    for (std::size_t i = 16; i < words.size(); ++i) {
        const std::uint32_t a = words[i - 15];
        const std::uint32_t b = words[i - 2];
        const std::uint32_t s0 = std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3;
        const std::uint32_t s1 = std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10;
        words[i] = words[i - 16] + s0 + words[i - 7] + s1;
    }
    return words;
}

} // namespace

void Digest::add(std::string_view bytes) {
    m_size += bytes.size();
    while (!bytes.empty()) {
        const std::size_t taken = std::min(bytes.size(), blockSize - m_pendingSize);
        std::memcpy(m_pending.data() + m_pendingSize, bytes.data(), taken);
        m_pendingSize += taken;
        bytes.remove_prefix(taken);
        if (m_pendingSize == blockSize) {
            addBlock(m_pending.data());
            m_pendingSize = 0;
        }
    }
}

std::string Digest::finish() {
    const std::uint64_t bits = m_size * 8;
    std::string padding(1, '\x80');
    padding.append((blockSize + 56 - (m_size + 1) % blockSize) % blockSize, '\0');
    for (int shift = 56; shift >= 0; shift -= 8)
        padding.push_back(static_cast<char>(bits >> shift & 0xff));
    add(padding);
    static constexpr char hexDigits[] = "0123456789abcdef";
    std::string digits;
    for (const std::uint32_t word : m_state) {
        for (int shift = 28; shift >= 0; shift -= 4)
            digits.push_back(hexDigits[word >> shift & 0xf]);
    }
    return digits;
}

void Digest::addBlock(const unsigned char* block) {
    const Schedule words = scheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = m_state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t s1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
        const std::uint32_t t1 = h + s1 + ((e & f) ^ (~e & g)) + roundConstants[i] + words[i];
        const std::uint32_t s0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
        const std::uint32_t t2 = s0 + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    const std::array<std::uint32_t, 8> changed = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < m_state.size(); ++i)
        m_state[i] += changed[i];
}

std::string digestOf(std::string_view bytes) {
    Digest digest;
    digest.add(bytes);
    return digest.finish();
}

} // namespace wendmark
