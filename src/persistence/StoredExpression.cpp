// SPDX-License-Identifier: MIT
// Reading goes over the bytes of a tree twice: once to see that it is whole and to count its nodes, then to make them
// in an arena of just that size. None of this recurses: a stored tree may be as deep as its block is long.

#include "persistence/StoredExpression.h"

#include <boost/container/small_vector.hpp>
#include <utility>

namespace reka {

namespace {

constexpr std::int32_t largestArgumentCount = 4;

const char16_t* const outOfBytes = u"data corrupted";
const char16_t* const badNode = u"invalid data";

/// Reads one node into `node`, but for its arguments: it has their number and no slots.
bool ReadNodeAlone(ExpressionNode& node, CByteReader& reader, std::u16string& errorText) {
    std::uint32_t kind = 0;
    if (!reader.ReadU32(kind)) {
        errorText = outOfBytes;
        return false;
    }
    if (kind >= static_cast<std::uint32_t>(nodeKindCount)) {
        errorText = badNode;
        return false;
    }
    node.kind = static_cast<NodeKind>(kind);
    bool isComplete = true;
    if (node.kind == NodeKind::RealConstant) {
        isComplete = reader.ReadF64(node.value);
    } else if (IsCompoundLeaf(node.kind)) {
        isComplete = reader.ReadI32(node.compoundIndex);
    } else {
        isComplete = reader.ReadI32(node.argumentCount);
    }
    if (!isComplete) {
        errorText = outOfBytes;
        return false;
    }
    if (node.argumentCount < 0 || node.argumentCount > largestArgumentCount) {
        errorText = badNode;
        return false;
    }
    return true;
}

/// Looks at the tree that `reader` comes to next, without keeping it: nothing is allocated for one that isn't whole.
bool SurveyStoredTree(CByteReader reader, TreeSurvey& survey, std::u16string& errorText) {
    for (std::uint64_t open = 1; open > 0; --open) {
        ExpressionNode node;
        if (!ReadNodeAlone(node, reader, errorText)) return false;
        survey.AddNode(node);
        open += static_cast<std::uint32_t>(node.argumentCount);
    }
    return true;
}

/// Reads a tree that is whole.
ExpressionTree ReadWholeTree(std::size_t nodeCount, CByteReader& reader, std::u16string& errorText) {
    struct Place {
        ExpressionNode* node;
        std::int32_t next;  // the argument to be read
    };
    ExpressionArena arena = MakeArena(nodeCount);
    const auto readNode = [&]() -> ExpressionNode& {
        ExpressionNode& node = MakeNode(*arena, NodeKind::Failed);
        ReadNodeAlone(node, reader, errorText);
        AllocateArguments(*arena, node, node.argumentCount);
        return node;
    };
    ExpressionNode& root = readNode();
    boost::container::small_vector<Place, 64> open = {{&root, 0}};
    while (!open.empty()) {
        Place& place = open.back();
        if (place.next == place.node->argumentCount) {
            open.pop_back();
            continue;
        }
        ExpressionNode& argument = readNode();
        place.node->arguments[place.next++] = &argument;
        if (argument.argumentCount > 0) open.push_back({&argument, 0});
    }
    return MakeTree(std::move(arena), root);
}

}  // namespace

std::uint64_t StoredNodeSize(const TreeSurvey& tree) {
    return 8 * std::uint64_t{tree.nodeCount} + 4 * std::uint64_t{tree.constantCount};
}

std::uint64_t StoredExpressionSize(const ExpressionRef* expression) {
    return expression ? 5 + StoredNodeSize(expression->survey) : 1;
}

void WriteStoredNode(const ExpressionNode& root, CByteWriter& writer) {
    boost::container::small_vector<const ExpressionNode*, 64> waiting = {&root};
    while (!waiting.empty()) {
        const ExpressionNode& node = *waiting.back();
        waiting.pop_back();
        writer.WriteI32(static_cast<std::int32_t>(node.kind));
        if (node.kind == NodeKind::RealConstant) {
            writer.WriteF64(node.value);
        } else if (IsCompoundLeaf(node.kind)) {
            writer.WriteI32(node.compoundIndex);
        } else {
            writer.WriteI32(node.argumentCount);
        }
        for (std::int32_t i = node.argumentCount; i-- > 0;) waiting.push_back(node.arguments[i]);
    }
}

void WriteStoredExpression(const ExpressionRef* expression, CByteWriter& writer) {
    writer.WriteU8(expression ? 1 : 0);
    if (!expression) return;
    writer.WriteU32(expression->dependencies);
    WriteStoredNode(*expression->root, writer);
}

ExpressionTree ReadStoredNode(CByteReader& reader, std::u16string& errorText) {
    TreeSurvey survey;
    if (!SurveyStoredTree(reader, survey, errorText)) return nullptr;
    return ReadWholeTree(survey.nodeCount, reader, errorText);
}

bool ReadStoredExpression(std::unique_ptr<ExpressionRef>& expression, CByteReader& reader, std::u16string& errorText) {
    std::uint8_t isPresent = 0;
    TreeSurvey survey;
    if (!reader.ReadU8(isPresent) || (isPresent && !reader.ReadU32(survey.dependencies))) {
        errorText = outOfBytes;
        return false;
    }
    if (!isPresent) return true;
    if (!SurveyStoredTree(reader, survey, errorText)) return false;
    // The stored mask counts, also where it disagrees with the tree.
    expression = std::make_unique<ExpressionRef>(ReadWholeTree(survey.nodeCount, reader, errorText), survey);
    return true;
}

}  // namespace reka
