// SPDX-License-Identifier: MIT
// A file of templates is a count, then a size and a block for each template. Nothing marks where a block begins, so
// behind a damaged one there are two roads to the next: by its size, and by its fields, which tell where they end.
// A road counts only if the sizes behind it lead to just the end of the file, with as many templates as the count says.
// For example, with the size of the second of three templates damaged:
//
//     count 3 | size, block A | bad size, block B | size, block C |
//                             by size leads behind the end of the file or amid a block, by fields to C, and from there
//                             to the end: all three are whole
//
// A file that was cut has no such road, and needs none: its whole templates come before the cut.

#include "Salvage.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "packagetext/PrintableName.h"
#include "packagetext/StoredBlock.h"
#include "persistence/ByteReader.h"
#include "text/Utf8.h"

namespace rekatool {

namespace {

constexpr std::size_t wordSize = 4;
constexpr std::uint32_t lastThermoVersion = 1;
constexpr std::size_t longestShownName = 80;  // characters

using ByteSpan = std::span<const std::uint8_t>;

/// A size word and what it frames.
struct Frame {
    std::optional<std::uint32_t> size;  // absent where the file ends within the word
    std::optional<std::size_t> end;     // absent where the file ends before the block does
};

/// What the fields of a block say, however long it is said to be.
struct Fields {
    bool isBlock = false;
    std::size_t end = 0;  // without the thermo version; where it isn't a block, where it stops making sense
};

/// `"name", ` where a block begins with one that can be read, and otherwise nothing.
std::string NameOf(ByteSpan block) {
    reka::CByteReader reader(block);
    std::uint32_t length = 0;
    ByteSpan units;
    if (!reader.ReadU32(length) || reader.Remaining() / 2 < length || !reader.ReadBytes(2 * std::size_t{length}, units))
        return {};
    std::u16string name;
    for (std::size_t i = 0; i < units.size() && name.size() < longestShownName; i += 2) {
        const auto unit = static_cast<char16_t>(units[i] | units[i + 1] << 8);
        if (unit == 0) break;
        name += unit;
    }
    const bool isCutInAPair = name.size() == longestShownName && (name.back() & 0xFC00) == 0xD800;
    if (isCutInAPair) name.pop_back();
    return name.empty() ? std::string() : "\"" + packagetext::PrintableName(name) + "\", ";
}

std::string Templates(std::int64_t first, std::int64_t last) {
    if (first == last) return "template " + std::to_string(first) + " is";
    return "templates " + std::to_string(first) + " to " + std::to_string(last) + " are";
}

std::string ByteText(std::size_t place) {
    return "byte " + std::to_string(place);
}

class CTemplateSearch {
public:
    explicit CTemplateSearch(ByteSpan file) : bytes(file) {}

    Salvaged Run() {
        reka::CByteReader reader(bytes);
        std::int32_t stated = 0;
        if (!reader.ReadI32(stated)) {
            Tell("the file ends within its number of templates");
            return std::move(salvaged);
        }
        count = std::max(stated, 0);
        std::size_t place = wordSize;
        for (number = 1; number <= count; ++number) {
            if (place == bytes.size()) {
                Tell(Templates(number, count) + " lost: the file ends before");
                return Finish();
            }
            const auto next = PassTemplate(place);
            if (!next) return Finish();
            place = *next;
        }
        TakeRest(place, stated);
        return Finish();
    }

private:
    Salvaged Finish() {
        salvaged.file.count = static_cast<std::int32_t>(salvaged.file.blocks.size());
        return std::move(salvaged);
    }

    void Tell(std::string text) { salvaged.damages.push_back(std::move(text)); }

    ByteSpan Part(std::size_t from, std::size_t to) const { return bytes.subspan(from, to - from); }

    /// How messages name the template of the frame at `place`.
    std::string TitleAt(std::size_t place) const {
        const std::size_t block = std::min(place + wordSize, bytes.size());
        return "template " + std::to_string(number) + ", " + NameOf(bytes.subspan(block)) + "from " + ByteText(place) +
               " on, ";
    }

    Frame FrameAt(std::size_t place) const {
        reka::CByteReader reader(bytes.subspan(place));
        std::uint32_t size = 0;
        if (!reader.ReadU32(size)) return {};
        if (size > reader.Remaining()) return {size, std::nullopt};
        return {size, place + wordSize + size};
    }

    Fields FieldsAt(std::size_t from, std::size_t to) const {
        const ByteSpan block = Part(from, to);
        reka::CByteReader reader(block);
        StoredPackage package;
        const bool isBlock = ReadUpToThermoVersion(reader, package);
        return {isBlock, to - reader.Remaining()};
    }

    /// Whether the sizes from `place` on frame just what is left of the file, in as many frames as templates are
    /// missing. Each place is looked at once, however often it is come by.
    bool LeadsToEnd(std::size_t place) {
        std::vector<std::size_t> passed;
        std::size_t last = place;
        while (last != bytes.size() && !framesToEnd.contains(last)) {
            passed.push_back(last);
            const Frame frame = FrameAt(last);
            if (!frame.end) break;
            last = *frame.end;
        }
        std::int64_t frames = -1;  // no way to the end
        if (last == bytes.size()) {
            frames = 0;
        } else if (const auto known = framesToEnd.find(last); known != framesToEnd.end()) {
            frames = known->second;
        }
        for (auto one = passed.rbegin(); one != passed.rend(); ++one) {
            if (frames >= 0) ++frames;
            framesToEnd[*one] = frames;
        }
        return frames == count - number;
    }

    /// The same, and the next block is whole. Blocks end in zeros, which make sizes of nothing: a wrong road may come
    /// to the end by some of those, but doesn't begin with a whole block.
    bool LeadsOn(std::size_t place) {
        if (place > bytes.size() || !LeadsToEnd(place)) return false;
        if (place == bytes.size()) return true;
        return packagetext::TryBlock(Part(place + wordSize, *FrameAt(place).end)).isReadable;
    }

    void Keep(std::size_t from, std::size_t to) {
        const ByteSpan block = Part(from, to);
        salvaged.file.blocks.emplace_back(block.begin(), block.end());
    }

    /// Keeps or loses the template at `place`. Where the next one begins; nothing if that can't be told.
    std::optional<std::size_t> PassTemplate(std::size_t place) {
        const Frame frame = FrameAt(place);
        if (!frame.end) return PassByFields(place, frame, {});
        const std::size_t block = place + wordSize;
        const packagetext::BlockReading reading = packagetext::TryBlock(Part(block, *frame.end));
        if (reading.isReadable) return PassReadable(place, *frame.end);
        return isFramingSure ? Lose(place, frame, reading.reason) : PassByFields(place, frame, reading.reason);
    }

    /// A block has a thermo version at its end or, an old one, none. A size that is off by just that word gives a
    /// readable block as well, which then lacks the word or has the next size for it.
    std::size_t PassReadable(std::size_t place, std::size_t end) {
        const std::size_t block = place + wordSize;
        const Fields fields = FieldsAt(block, end);
        std::uint32_t thermoVersion = 0;
        const bool hasThermoVersion = reka::CByteReader(Part(fields.end, end)).ReadU32(thermoVersion);
        std::size_t rightEnd = end;
        if (!hasThermoVersion || thermoVersion > lastThermoVersion) {
            const std::size_t other = hasThermoVersion ? fields.end : fields.end + wordSize;
            if (!LeadsOn(end) && LeadsOn(other)) rightEnd = other;
        }
        Keep(block, rightEnd);
        if (rightEnd != end) TellOfSize(place);
        return rightEnd;
    }

    /// A template whose size leads to nothing readable: the size may be wrong, or the block.
    std::optional<std::size_t> PassByFields(std::size_t place, const Frame& frame, const std::string& reason) {
        const std::size_t block = place + wordSize;
        const std::optional<std::size_t> end = frame.size ? EndByFields(block) : std::nullopt;
        const bool isOtherEnd = end && end != frame.end;
        const bool isSizeRight = frame.end && (isOtherEnd ? LeadsOn(*frame.end) : LeadsToEnd(*frame.end));
        if (isOtherEnd && !isSizeRight) {
            const packagetext::BlockReading reading = packagetext::TryBlock(Part(block, *end));
            if (!reading.isReadable) {
                Tell(TitleAt(place) + "is lost: " + reading.reason);
                return end;
            }
            Keep(block, *end);
            TellOfSize(place);
            return end;
        }
        Lose(place, frame, reason);
        if (isSizeRight && !isOtherEnd) {
            isFramingSure = true;
            return frame.end;
        }
        if (number < count) {
            Tell(Templates(number + 1, count) + " lost: behind template " + std::to_string(number) +
                 " nothing can be found for certain");
        }
        return std::nullopt;
    }

    /// Where the fields of the block at `block` end, if the sizes behind that lead to the end of the file.
    std::optional<std::size_t> EndByFields(std::size_t block) {
        const Fields fields = FieldsAt(block, bytes.size());
        if (!fields.isBlock) return std::nullopt;
        const bool isLast = number == count;
        const bool leadsBehindThermoVersion = LeadsOn(fields.end + wordSize);
        // The last block of a file that lacks its last word was cut rather than stored without.
        const bool leadsWithoutThermoVersion = !isLast && LeadsOn(fields.end);
        if (leadsBehindThermoVersion == leadsWithoutThermoVersion) return std::nullopt;
        return leadsBehindThermoVersion ? fields.end + wordSize : fields.end;
    }

    /// Says what is lost. Where its size ends.
    std::optional<std::size_t> Lose(std::size_t place, const Frame& frame, const std::string& reason) {
        const std::size_t block = place + wordSize;
        if (!frame.size) {
            Tell(TitleAt(place) + "is lost: the file ends within its size");
        } else if (!frame.end) {
            Tell(TitleAt(place) + "is lost: its size says " + std::to_string(*frame.size) +
                 " bytes, but the file ends after " + std::to_string(bytes.size() - block));
        } else {
            const Fields fields = FieldsAt(block, *frame.end);
            Tell(TitleAt(place) + "is lost: it can't be read at " + ByteText(fields.end) + ": " + reason);
        }
        return frame.end;
    }

    void TellOfSize(std::size_t place) { Tell(TitleAt(place) + "is whole, but its size was wrong: it is put right"); }

    /// What stands behind the last template: further templates if the count is wrong, or nothing that the component
    /// reads.
    void TakeRest(std::size_t place, std::int32_t stated) {
        const std::size_t start = place;
        const std::size_t kept = salvaged.file.blocks.size();
        while (place != bytes.size()) {
            const Frame frame = FrameAt(place);
            if (!frame.end || !packagetext::TryBlock(Part(place + wordSize, *frame.end)).isReadable) {
                salvaged.file.blocks.resize(kept);
                Tell("the " + std::to_string(bytes.size() - start) + " bytes from " + ByteText(start) +
                     " on, behind the last template, are left out: they are no templates");
                return;
            }
            Keep(place + wordSize, *frame.end);
            place = *frame.end;
        }
        if (place == start) return;
        const std::size_t behind = salvaged.file.blocks.size() - kept;
        Tell("the number of templates is put right: the file says " + std::to_string(stated) + ", but " +
             std::to_string(behind) + " more " + (behind == 1 ? "is" : "are") + " there");
    }

    ByteSpan bytes;
    std::int64_t count = 0;
    std::int64_t number = 0;                                    // of the template at hand
    bool isFramingSure = false;                                 // the sizes from here on lead to just the end
    std::unordered_map<std::size_t, std::int64_t> framesToEnd;  // by the place of a size; below 0 for none
    Salvaged salvaged;
};

}  // namespace

Salvaged SalvageTemplates(std::span<const std::uint8_t> bytes) {
    return CTemplateSearch(bytes).Run();
}

}  // namespace rekatool
