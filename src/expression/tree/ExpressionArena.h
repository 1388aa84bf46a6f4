// SPDX-License-Identifier: MIT
// The memory of one expression. All nodes of a tree, with the lists of their arguments, lie in one arena and go with it
// in one piece, so that no owner walks over a tree to free it, and a walk over a tree meets few lines of the cache.

#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>

namespace reka {

using ArenaResource = std::pmr::monotonic_buffer_resource;

/// Frees an arena with everything in it, whatever hangs together there. A null pointer is passed over.
void DestroyExpression(ArenaResource* arena) noexcept;

struct ArenaDeleter {
    void operator()(ArenaResource* arena) const noexcept { DestroyExpression(arena); }
};

/// Sole owner of an arena. What is made in it is never freed by itself.
using ExpressionArena = std::unique_ptr<ArenaResource, ArenaDeleter>;

/// An arena that has room for `nodeCount` nodes with up to two arguments each, in one allocation; more find room all
/// the same. May throw std::bad_alloc.
ExpressionArena MakeArena(std::size_t nodeCount);

}  // namespace reka
