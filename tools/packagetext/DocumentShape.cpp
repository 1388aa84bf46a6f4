// SPDX-License-Identifier: MIT
// The parser of the library takes the last of two members of one name and drops the other without a word, builds a
// value of any depth, which whatever copies it later walks by recursion, and forgets on which line a value stood. So
// the text is walked through as a row of events, with a count of the line ends that the parser has read when it reports
// one.

#include "packagetext/DocumentShape.h"

#include <iterator>
#include <set>
#include <vector>

#include "packagetext/Document.h"

namespace packagetext {

namespace {

/// Where the parser is.
struct Position {
    std::size_t line = 1;
    bool isBehindLineEnd = false;
};

/// Hands the text to the parser, which reads at most the character behind a value.
class CCountedText {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CCountedText(const char* start, Position& counted) : at(start), position(&counted) {}
    reference operator*() const { return *at; }
    CCountedText& operator++() {
        position->isBehindLineEnd = *at == '\n';
        if (position->isBehindLineEnd) ++position->line;
        ++at;
        return *this;
    }
    bool operator==(const CCountedText& other) const { return at == other.at; }
    bool operator!=(const CCountedText& other) const { return at != other.at; }

private:
    const char* at;
    Position* position;
};

/// What the parser reports, as the two walkers need it: each value on its own, and the members of an object.
class CWalker : public nlohmann::json_sax<Json> {
public:
    bool null() override { return Value(); }
    bool boolean(bool) override { return Value(); }
    bool number_integer(number_integer_t) override { return Number(); }
    bool number_unsigned(number_unsigned_t) override { return Number(); }
    bool number_float(number_float_t, const std::string&) override { return Number(); }
    bool string(std::string&) override { return Value(); }
    bool binary(Json::binary_t&) override { return Value(); }
    bool start_object(std::size_t) override { return Value() && Open(false); }
    bool start_array(std::size_t) override { return Value() && Open(true); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }
    bool key(std::string& name) override { return Member(name); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

    void Walk(std::string_view text) {
        Json::sax_parse(CCountedText(text.data(), position), CCountedText(text.data() + text.size(), position), this);
    }

protected:
    /// Each answers whether to go on.
    virtual bool Value() = 0;
    virtual bool Member(const std::string& name) = 0;
    virtual bool Open(bool isList) = 0;
    virtual bool Close() = 0;

    std::size_t Line() const { return position.line - (isBehindValue && position.isBehindLineEnd ? 1 : 0); }

private:
    /// A number ends only with the character behind it.
    bool Number() {
        isBehindValue = true;
        const bool goesOn = Value();
        isBehindValue = false;
        return goesOn;
    }

    Position position;
    bool isBehindValue = false;
};

/// Stops at the first fault of the shape.
class CShapeCheck final : public CWalker {
public:
    explicit CShapeCheck(const ShapeLimits& shapeLimits) : limits(shapeLimits) {}

    std::string fault;  // empty for none

private:
    /// An object or a list that isn't closed.
    struct Level {
        bool isList = false;
        std::size_t count = 0;        // of a list's elements so far
        std::string member;           // the last one of an object
        std::set<std::string> names;  // of an object's members so far
    };

    bool Value() override {
        if (!open.empty() && open.back().isList) ++open.back().count;
        return true;
    }
    bool Member(const std::string& name) override {
        Level& level = open.back();
        level.member = name;
        if (!level.names.insert(name).second) {
            return Stop("line " + std::to_string(Line()) + ": " + Path() + ": the member is there twice in one object");
        }
        return level.names.size() <= limits.members ||
               Stop("line " + std::to_string(Line()) + ": there is an object with more than " +
                    std::to_string(limits.members) + " members");
    }
    bool Open(bool isList) override {
        open.push_back({isList, 0, {}, {}});
        return open.size() <= limits.nesting || Stop("the text is nested too deeply");
    }
    bool Close() override {
        open.pop_back();
        return true;
    }

    bool Stop(const std::string& reason) {
        fault = reason;
        return false;
    }

    std::string Path() const {
        std::string path;
        for (const Level& level : open) {
            if (level.isList) {
                path += "[" + std::to_string(level.count - 1) + "]";
            } else {
                path += (path.empty() ? "" : ".") + level.member;
            }
        }
        return path;
    }

    ShapeLimits limits;
    std::vector<Level> open;
};

/// Follows the path that a sentence begins with, as far as the text has it.
class CLineFinder final : public CWalker {
public:
    explicit CLineFinder(std::string_view wantedPath) : path(wantedPath) {}

    std::size_t line = 1;

private:
    struct Level {
        bool isList = false;
        std::size_t count = 0;
        std::size_t start = 0;      // how much of the path leads to this
        bool isOnTheWay = false;    // whether it does
        std::size_t behind = 0;     // how much leads to the member or element that is being read
        bool leadsFurther = false;  // whether that is on the way too
    };

    bool Value() override {
        if (open.empty() || !open.back().isList) return true;
        Level& level = open.back();
        Follow(level, "[" + std::to_string(level.count++) + "]");
        return true;
    }
    bool Member(const std::string& name) override {
        Level& level = open.back();
        Follow(level, (level.start == 0 ? "" : ".") + name);
        return true;
    }
    bool Open(bool isList) override {
        if (open.empty()) {
            open.push_back({isList, 0, 0, true, 0, false});
        } else {
            const Level& around = open.back();
            open.push_back({isList, 0, around.behind, around.leadsFurther, 0, false});
        }
        return true;
    }
    bool Close() override {
        open.pop_back();
        return true;
    }

    void Follow(Level& level, const std::string& step) {
        level.behind = level.start + step.size();
        level.leadsFurther =
            level.isOnTheWay && path.substr(level.start, step.size()) == step &&
            (level.behind == path.size() || std::string_view(".[:").find(path[level.behind]) != std::string_view::npos);
        if (!level.leadsFurther || level.behind <= found) return;
        found = level.behind;
        line = Line();
    }

    std::string_view path;
    std::size_t found = 0;
    std::vector<Level> open;
};

}  // namespace

bool CheckShape(std::string_view text, const ShapeLimits& limits, std::string& errorText) {
    CShapeCheck check(limits);
    check.Walk(text);
    errorText = check.fault;
    return errorText.empty();
}

std::string AtLine(std::string_view text, const std::string& sentence) {
    CLineFinder finder(sentence);
    finder.Walk(text);
    return "line " + std::to_string(finder.line) + ": " + sentence;
}

}  // namespace packagetext
