#include <tavik/crypto/LittleEndian.h>
#include <tavik/crypto/RijndaelKernel.h>

#include <array>

// Rijndael by tables: an entry is what one byte of the state contributes to a column, the S-box and MixColumns in one.
// Time depends on which entries are in the cache.

namespace Tavik::Crypto {

namespace {

using ByteTable = std::array<std::uint8_t, 256>;
using ColumnTables = std::array<std::array<std::uint32_t, 256>, 4>; // one for each row

struct Direction
{
    ByteTable box;        // SubBytes
    ColumnTables columns; // SubBytes and MixColumns
};

struct Tables
{
    Direction forward;
    Direction inverse;
};

/// Product in GF(2^8) modulo x^8 + x^4 + x^3 + x + 1.
constexpr std::uint32_t product(std::uint32_t a, std::uint32_t b)
{
    std::uint32_t sum = 0;
    for (; b != 0; b >>= 1) {
        sum ^= b & 1 ? a : 0;
        a = a << 1 ^ (a >> 7) * 0x11B;
    }
    return sum;
}

constexpr std::uint32_t rotated(std::uint32_t word, std::size_t bits)
{
    return bits == 0 ? word : word << bits | word >> (32 - bits);
}

constexpr ByteTable makeBox()
{
    ByteTable box{};
    std::uint32_t power = 1;   // of 3, which generates all bytes but 0
    std::uint32_t inverse = 1; // of that power: the same power of 0xF6, the inverse of 3
    do {
        const std::uint32_t repeated = inverse * 0x01010101;
        box[power] = static_cast<std::uint8_t>(
            (repeated ^ rotated(repeated, 1) ^ rotated(repeated, 2) ^ rotated(repeated, 3) ^ rotated(repeated, 4)) ^
            0x63);
        power = product(power, 3);
        inverse = product(inverse, 0xF6);
    } while (power != 1);
    box[0] = 0x63;
    return box;
}

constexpr ByteTable inverted(const ByteTable& box)
{
    ByteTable inverse{};
    for (std::size_t i = 0; i < box.size(); ++i) {
        inverse[box[i]] = static_cast<std::uint8_t>(i);
    }
    return inverse;
}

/// @param factors  what a byte in the first row is multiplied by for each row of the mixed column
constexpr Direction makeDirection(const ByteTable& box, const std::array<std::uint32_t, 4>& factors)
{
    Direction direction{box, {}};
    for (std::size_t i = 0; i < box.size(); ++i) {
        const std::uint32_t byte = box[i];
        const std::uint32_t column = product(byte, factors[0]) | product(byte, factors[1]) << 8 |
                                     product(byte, factors[2]) << 16 | product(byte, factors[3]) << 24;
        for (std::size_t row = 0; row < 4; ++row) {
            direction.columns[row][i] = rotated(column, 8 * row);
        }
    }
    return direction;
}

constexpr Tables makeTables()
{
    const ByteTable box = makeBox();
    return {makeDirection(box, {2, 1, 1, 3}), makeDirection(inverted(box), {14, 9, 13, 11})};
}

alignas(64) constexpr Tables AllTables = makeTables();

template <bool Forward>
constexpr const Direction& tables()
{
    return Forward ? AllTables.forward : AllTables.inverse;
}

constexpr std::uint32_t byteAt(std::uint32_t word, std::size_t row)
{
    return word >> 8 * row & 0xFF;
}

std::uint32_t substitute(std::uint32_t word)
{
    const ByteTable& box = AllTables.forward.box;
    return static_cast<std::uint32_t>(box[byteAt(word, 0)]) | static_cast<std::uint32_t>(box[byteAt(word, 1)]) << 8 |
           static_cast<std::uint32_t>(box[byteAt(word, 2)]) << 16 |
           static_cast<std::uint32_t>(box[byteAt(word, 3)]) << 24;
}

std::uint32_t inverseMixColumn(std::uint32_t column)
{
    const auto& columns = AllTables.inverse.columns;
    const ByteTable& box = AllTables.forward.box; // undoes the S-box that is in the tables
    return columns[0][box[byteAt(column, 0)]] ^ columns[1][box[byteAt(column, 1)]] ^
           columns[2][box[byteAt(column, 2)]] ^ columns[3][box[byteAt(column, 3)]];
}

template <std::size_t Words>
using Block = std::array<std::uint32_t, Words>;

template <std::size_t Words>
Block<Words> load(const unsigned char* bytes)
{
    Block<Words> block;
    for (std::size_t i = 0; i < Words; ++i) {
        block[i] = loadLittleEndian(bytes + 4 * i);
    }
    return block;
}

template <std::size_t Words>
void store(const Block<Words>& block, unsigned char* bytes)
{
    for (std::size_t i = 0; i < Words; ++i) {
        storeLittleEndian(block[i], bytes + 4 * i);
    }
}

template <std::size_t Words>
Block<Words> added(Block<Words> block, const std::uint32_t* addend)
{
    for (std::size_t i = 0; i < Words; ++i) {
        block[i] ^= addend[i];
    }
    return block;
}

/// The byte that ShiftRows puts into this row and column.
template <std::size_t Words, bool Forward>
std::uint32_t shiftedByte(const Block<Words>& block, std::size_t row, std::size_t column)
{
    return byteAt(block[shiftedColumn(Words, Forward, row, column)], row);
}

template <std::size_t Words, bool Forward>
Block<Words> roundOf(const Block<Words>& block, const std::uint32_t* key)
{
    const auto& columns = tables<Forward>().columns;
    Block<Words> next;
#pragma GCC unroll 8
    for (std::size_t column = 0; column < Words; ++column) {
        next[column] = columns[0][shiftedByte<Words, Forward>(block, 0, column)] ^
                       columns[1][shiftedByte<Words, Forward>(block, 1, column)] ^
                       columns[2][shiftedByte<Words, Forward>(block, 2, column)] ^
                       columns[3][shiftedByte<Words, Forward>(block, 3, column)] ^ key[column];
    }
    return next;
}

/// The last round has no MixColumns.
template <std::size_t Words, bool Forward>
Block<Words> lastRoundOf(const Block<Words>& block, const std::uint32_t* key)
{
    const ByteTable& box = tables<Forward>().box;
    Block<Words> next;
#pragma GCC unroll 8
    for (std::size_t column = 0; column < Words; ++column) {
        std::uint32_t word = key[column];
        for (std::size_t row = 0; row < 4; ++row) {
            word ^= static_cast<std::uint32_t>(box[shiftedByte<Words, Forward>(block, row, column)]) << 8 * row;
        }
        next[column] = word;
    }
    return next;
}

template <std::size_t Words, bool Forward>
Block<Words> cipher(Block<Words> block, const RoundKeys& keys)
{
    const std::uint32_t* key = keys.words;
    block = added<Words>(block, key);
    for (std::size_t round = 1; round < keys.rounds; ++round) {
        block = roundOf<Words, Forward>(block, key += Words);
    }
    return lastRoundOf<Words, Forward>(block, key + Words);
}

template <std::size_t Words, bool Forward>
void ecb(const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount)
{
    for (; blockCount > 0; --blockCount, in += 4 * Words, out += 4 * Words) {
        store<Words>(cipher<Words, Forward>(load<Words>(in), keys), out);
    }
}

template <std::size_t Words, bool Forward>
void cbc(const RoundKeys& keys, const unsigned char* in, unsigned char* out, std::size_t blockCount)
{
    Block<Words> previous{};
    for (; blockCount > 0; --blockCount, in += 4 * Words, out += 4 * Words) {
        const Block<Words> block = load<Words>(in);
        if constexpr (Forward) {
            previous = cipher<Words, true>(added<Words>(block, previous.data()), keys);
            store<Words>(previous, out);
        } else {
            store<Words>(added<Words>(cipher<Words, false>(block, keys), previous.data()), out);
            previous = block;
        }
    }
}

constexpr RijndaelKernel TableKernel = {
    substitute,
    inverseMixColumn,
    ofAnyBlock<ecb<4, true>, ecb<6, true>, ecb<8, true>>,
    ofAnyBlock<cbc<4, true>, cbc<6, true>, cbc<8, true>>,
    ofAnyBlock<ecb<4, false>, ecb<6, false>, ecb<8, false>>,
    ofAnyBlock<cbc<4, false>, cbc<6, false>, cbc<8, false>>,
};

} // namespace

const RijndaelKernel& tableRijndaelKernel()
{
    return TableKernel;
}

} // namespace Tavik::Crypto
