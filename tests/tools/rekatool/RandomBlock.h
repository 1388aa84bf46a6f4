// SPDX-License-Identifier: MIT
// Blocks that hold whatever the layout allows, for the tests of rekatool.

#pragma once

#include <random>

#include "SampleBlocks.h"

namespace rekatool {

/// Makes well-formed blocks of every version with odd contents; the same ones for the same seed.
class CRandomBlock {
public:
    explicit CRandomBlock(unsigned seed) : random(seed) {}

    CStoredBytes Make() {
        CStoredBytes block;
        const std::uint32_t version = Below(6);
        Wide(block);
        Wide(block);
        Narrow(block);
        if (version > 0 || Below(4) == 0) block.U32(0xFFFFFFFF).U32(version);
        const std::uint32_t compounds = Count(block);
        for (std::uint32_t i = 0; i < compounds; ++i) {
            for (int text = 0; text < 4; ++text) Wide(block);
            Number(block);
            Number(block);
        }
        const std::uint32_t reactions = Count(block);
        for (std::uint32_t i = 0; i < reactions; ++i) Reaction(block, version, compounds);
        if (Below(4) > 0) Word(block);
        return block;
    }

private:
    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); }

    /// Writes a count, now and then one below 0, and gives how many records it stands for.
    std::uint32_t Count(CStoredBytes& block) {
        if (Below(8) == 0) {
            block.U32(0x80000000U | Below(0x7FFFFFFF));
            return 0;
        }
        const std::uint32_t count = Below(4);
        block.U32(count);
        return count;
    }

    void Reaction(CStoredBytes& block, std::uint32_t version, std::uint32_t compounds) {
        Wide(block);
        Wide(block);
        if (version < 2) Wide(block);
        Word(block);
        Word(block);
        for (int text = 0; text < 3; ++text) Narrow(block);
        for (std::uint32_t i = 0; i < compounds; ++i) Number(block);
        for (int tree = 0; tree < 3; ++tree) Expression(block);
        if (version >= 2) Word(block);
    }

    /// Units of all sorts, in front of a terminator that is hardly ever another one than zero.
    void Wide(CStoredBytes& block) {
        constexpr char16_t units[] = {u'a', u'Z', u' ',   u'"',   u'\\',  u'\n', 0,
                                      0x7F, 0xE9, 0xD83D, 0xDD25, 0xFFFD, 0xFFFF};
        const std::uint32_t length = Below(6);
        block.U32(length);
        if (length == 0) return;
        for (std::uint32_t i = 0; i < length; ++i) Unit(block, Below(3) == 0 ? units[Below(13)] : u'n');
        Unit(block, Below(10) == 0 ? static_cast<char16_t>(random()) : u'\0');
    }
    static void Unit(CStoredBytes& block, char16_t unit) {
        block.U8(static_cast<std::uint8_t>(unit & 0xFF)).U8(static_cast<std::uint8_t>(unit >> 8));
    }

    void Narrow(CStoredBytes& block) {
        constexpr const char* expressions[] = {"", "T", "2*T", "P/(T+1)", "1e-3", "2*", "MIN(T;P)"};
        if (Below(3) > 0) {
            block.Narrow(expressions[Below(7)]);
            return;
        }
        const std::uint32_t length = Below(5);
        block.U32(length);
        if (length == 0) return;
        for (std::uint32_t i = 0; i < length; ++i) block.U8(static_cast<std::uint8_t>(random()));
        block.U8(Below(5) == 0 ? static_cast<std::uint8_t>(random()) : 0);
    }

    void Number(CStoredBytes& block) {
        if (Below(2) == 0) {
            block.Bits(random());
        } else {
            block.F64(static_cast<double>(Below(2000)) / 16 - 60);
        }
    }
    void Word(CStoredBytes& block) { block.U32(Below(6) == 0 ? static_cast<std::uint32_t>(random()) : Below(3)); }

    void Expression(CStoredBytes& block) {
        if (Below(3) == 0) {
            block.U8(0);
            return;
        }
        block.U8(Below(5) == 0 ? static_cast<std::uint8_t>(1 + Below(255)) : 1).U32(Below(64));
        Node(block, 0);
    }
    void Node(CStoredBytes& block, int depth) {
        const std::uint32_t kind = Below(35);
        block.U32(kind);
        if (kind == 0) {
            Number(block);
        } else if (kind >= 30) {
            block.U32(static_cast<std::uint32_t>(random()));
        } else {
            const std::uint32_t count = depth < 4 ? Below(5) : 0;
            block.U32(count);
            for (std::uint32_t i = 0; i < count; ++i) Node(block, depth + 1);
        }
    }

    std::mt19937_64 random;
};

}  // namespace rekatool
