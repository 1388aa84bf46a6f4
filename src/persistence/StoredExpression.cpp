// None of this recurses: a stored tree may be as deep as its block is long, and a host's thread may have a small stack.
// Writing takes nodes off a stack of those that wait, reading keeps a stack of the nodes whose arguments are still to
// come. Before a tree is read its nodes are counted on a copy of the cursor, so that all of them come out of one
// allocation; the count is bounded by the bytes that are there, whatever they claim.

#include "persistence/StoredExpression.h"

#include <utility>

#include "expression/tree/NodeSource.h"
#include "expression/tree/WalkStack.h"

namespace reka {

namespace {

constexpr std::int32_t largestArgumentCount = 4;

const char16_t* const outOfBytes = u"data corrupted";
const char16_t* const badNode = u"invalid data";

/// The number of nodes of the tree that a reader comes to next; of data that is no tree, those up to its fault.
std::size_t CountNodesAhead(CByteReader reader) {
    std::size_t count = 0;
    for (std::uint64_t open = 1; open > 0; --open) {
        std::uint32_t kind = 0;
        std::uint32_t argumentCount = 0;
        if (!reader.ReadU32(kind) || kind >= static_cast<std::uint32_t>(nodeKindCount)) break;
        ++count;
        if (static_cast<NodeKind>(kind) == NodeKind::RealConstant) {
            double value = 0.0;
            reader.ReadF64(value);
        } else if (!reader.ReadU32(argumentCount)) {
            break;
        } else if (!IsCompoundLeaf(static_cast<NodeKind>(kind))) {
            if (argumentCount > largestArgumentCount) break;
            open += argumentCount;
        }
    }
    return count;
}

/// Reads one node without its arguments, for which it makes empty slots.
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
    std::int32_t count = 0;
    bool isComplete = true;
    if (node.kind == NodeKind::RealConstant) {
        isComplete = reader.ReadF64(node.value);
    } else if (IsCompoundLeaf(node.kind)) {
        isComplete = reader.ReadI32(node.compoundIndex);
    } else {
        isComplete = reader.ReadI32(count);
    }
    if (!isComplete) {
        errorText = outOfBytes;
        return false;
    }
    if (count < 0 || count > largestArgumentCount) {
        errorText = badNode;
        return false;
    }
    AllocateArguments(node, count);
    return true;
}

/// Reads a node with everything under it, which `nodes` makes, into `root`.
bool ReadTree(ExpressionNode& root, CNodeSource& nodes, CByteReader& reader, std::u16string& errorText) {
    struct Place {
        ExpressionNode* node;
        std::int32_t next;  // the argument to be read
    };
    if (!ReadNodeAlone(root, reader, errorText)) return false;
    CWalkStack<Place> open;
    open.Push({&root, 0});
    while (!open.IsEmpty()) {
        Place& place = open.Top();
        if (place.next == place.node->argumentCount) {
            open.Pop();
            continue;
        }
        ExpressionNode* const argument = nodes.Make(NodeKind::Failed).release();
        place.node->arguments[place.next++] = argument;
        if (!ReadNodeAlone(*argument, reader, errorText)) return false;
        if (argument->argumentCount > 0) open.Push({argument, 0});
    }
    return true;
}

}  // namespace

std::uint64_t StoredNodeSize(const TreeSurvey& tree) {
    return 8 * std::uint64_t{tree.nodeCount} + 4 * std::uint64_t{tree.constantCount};
}

std::uint64_t StoredExpressionSize(const ExpressionRef* expression) {
    return expression ? 5 + StoredNodeSize(expression->survey) : 1;
}

void WriteStoredNode(const ExpressionNode& root, CByteWriter& writer) {
    CWalkStack<const ExpressionNode*> waiting;
    waiting.Push(&root);
    while (!waiting.IsEmpty()) {
        const ExpressionNode& node = *waiting.Top();
        waiting.Pop();
        writer.WriteI32(static_cast<std::int32_t>(node.kind));
        if (node.kind == NodeKind::RealConstant) {
            writer.WriteF64(node.value);
        } else if (IsCompoundLeaf(node.kind)) {
            writer.WriteI32(node.compoundIndex);
        } else {
            writer.WriteI32(node.argumentCount);
        }
        for (std::int32_t i = node.argumentCount; i-- > 0;) waiting.Push(node.arguments[i]);
    }
}

void WriteStoredExpression(const ExpressionRef* expression, CByteWriter& writer) {
    writer.WriteU8(expression ? 1 : 0);
    if (!expression) return;
    writer.WriteU32(expression->dependencies);
    WriteStoredNode(*expression->root, writer);
}

bool ReadStoredNode(ExpressionNode& node, CByteReader& reader, std::u16string& errorText) {
    CNodeSource nodes(CountNodesAhead(reader));
    return ReadTree(node, nodes, reader, errorText);
}

bool ReadStoredExpression(std::unique_ptr<ExpressionRef>& expression, CByteReader& reader, std::u16string& errorText) {
    std::uint8_t isPresent = 0;
    std::uint32_t dependencies = 0;
    if (!reader.ReadU8(isPresent) || (isPresent && !reader.ReadU32(dependencies))) {
        errorText = outOfBytes;
        return false;
    }
    if (!isPresent) return true;
    ExpressionTree tree;
    {
        CNodeSource nodes(CountNodesAhead(reader));
        tree = nodes.Make(NodeKind::Failed);
        if (!ReadTree(*tree, nodes, reader, errorText)) return false;
    }
    auto read = std::make_unique<ExpressionRef>(std::move(tree));
    read->dependencies = dependencies;  // the stored mask counts, also where it disagrees with the tree
    expression = std::move(read);
    return true;
}

}  // namespace reka
