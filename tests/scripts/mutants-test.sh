#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Which changes tests/mutants makes of a source, and what its table says of each, on a tree of one source whose test
# program is as small: it prints what GoogleTest would, and looks at less than it should.
set -euo pipefail
mutants=$(cd "$(dirname "${BASH_SOURCE[0]}")/../mutants" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0

# expect WHAT EXPECTED FOUND
expect() {
    if [ "$2" != "$3" ]; then
        echo "failed: $1"
        diff <(echo "$2") <(echo "$3") || true
        failures=$((failures + 1))
    fi
}

# mutations: what can be changed in the source on the standard input.
mutations() {
    python3 -B -c '
import sys
sys.path.insert(0, sys.argv[1])
from find_mutations import find_mutations
for mutation in find_mutations(sys.stdin.read()):
    print(f"{mutation.line} {mutation.kind}: {mutation.words}")' "$mutants"
}

expect "what isn't code stays" "" "$(mutations <<'END'
// a comment with 1 + 2 < 3
#define ONE 1 + \
    1
/* another
   && !true */
static_assert(sizeof(int) > 1 + 1, "one");
const char* const text = "1 < 2";
const char16_t* const raw = uR"(x && 1)";
std::vector<std::map<int, T>> Declared(const T& a, T* b, T&& c);
boost::container::small_vector<int, 64> waiting;
END
)"
expect "signs, words and numbers" "2 condition: if negated
2 relation: < becomes <=
2 logic: && becomes ||
2 logic: ! left out
2 arithmetic: - left out
2 return: returns {}
2 constant: 1 becomes 0
2 constant: 1 becomes 2
3 constant: 0 becomes 1
3 relation: != becomes ==
3 left out: assignment of x left out
3 arithmetic: *= becomes /=
3 constant: 0x1F becomes 30
3 constant: 0x1F becomes 32
4 left out: call of Call left out
4 constant: true becomes false
5 constant: 2.5 becomes (2.5 + 1)
6 return: returns S_FALSE" "$(mutations <<'END'
HRESULT F(int x, int y) {
    if (x < y && !Is(x)) return -1;
    for (int i = 0; i != y; ++i) x *= 0x1F;
    Call(true,
    2.5);
    return S_OK;
}
END
)"
expect "a condition with a declaration isn't negated" "1 condition: if negated
1 relation: == becomes !=
1 constant: 3 becomes 2
1 constant: 3 becomes 4" "$(mutations <<'END'
if (const T x = F(); x == 3) {}
while (T* const y = G()) {}
END
)"

expect "each change that is known to behave the same can be made" "" "$(cd "$mutants/../.." && python3 -B -c '
import sys
sys.path.insert(0, sys.argv[1])
from mutants import mutants_of, read_known
known = read_known(sys.argv[1] + "/same-behaviour.txt")
made = {mutant.key() for file in {key[0] for key in known} for mutant in mutants_of(file, None)}
for file, words, line in sorted(known - made):
    print(f"{file}: {words}: {line}")' "$mutants")"

mkdir -p "$folder/tree/src/part" "$folder/tree/tests/part"
cd "$folder/tree"
cat >src/part/Small.cpp <<'END'
#include "Small.h"
int Twice(int x) { return x * 2; }
int Unseen(int x) { return x + 7; }
int Same(unsigned x) { return x > 0; }
int Known(int x) { return x; }
int Steps(int n) {
    volatile long left = n;
    while (left != 0) left--;
    return static_cast<int>(left) + 1;
}
END
echo "int Twice(int); int Unseen(int); int Same(unsigned); int Known(int); int Steps(int);" >src/part/Small.h
cat >tests/part/Small_test.cpp <<'END'
#include "../../src/part/Small.h"
#include <cstdio>
#include <cstdlib>
int main() {
    std::puts("[ RUN      ] Small.Doubles");
    if (Twice(3) != 6) return std::puts("[  FAILED  ] Small.Doubles (0 ms)"), 1;
    std::puts("[ RUN      ] Small.Steps");
    std::fflush(stdout);
    if (Steps(2) != 1) std::abort();
}
END
echo "| \`src/part/Small.cpp\` | \`tests/part/Small_test.cpp\` |" >tests/README.md
cat >CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(Small CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
add_library(small STATIC src/part/Small.cpp)
add_executable(reka_tests tests/part/Small_test.cpp)
target_link_libraries(reka_tests small)
END
cat >known.txt <<'END'
# A reason for each.

src/part/Small.cpp
returns {}
int Known(int x) { return {}; }
Nobody calls it.
END
cmake -G Ninja -B "$folder/build" -DCMAKE_CXX_FLAGS=-O1 >/dev/null
cmake --build "$folder/build" >/dev/null

# run ARGUMENT...: the outcomes, a line for each mutant, and the summary.
run() {
    python3 -B "$mutants/mutants.py" --build "$folder/build" --known known.txt "$@" || echo "exit code $?"
}

expect "the table and its sum" "src/part/Small.cpp | 2 | * becomes / | killed by Small.Doubles | int Twice(int x) { return x / 2; }
src/part/Small.cpp | 2 | 2 becomes 1 | killed by Small.Doubles | int Twice(int x) { return x * 1; }
src/part/Small.cpp | 2 | 2 becomes 3 | killed by Small.Doubles | int Twice(int x) { return x * 3; }
src/part/Small.cpp | 2 | returns {} | killed by Small.Doubles | int Twice(int x) { return {}; }
~4 mutants: 4 killed, 100.0 % of those that change behaviour; 0 survived, 0 same behaviour, 0 same object code, 0 not compiled" \
    "$(run src/part/Small.cpp:2 | sed '/^src/!s/^/~/' | LC_ALL=C sort)"
expect "what nobody looks at survives" "src/part/Small.cpp | 3 | + becomes - | survived | int Unseen(int x) { return x - 7; }
src/part/Small.cpp | 3 | 7 becomes 6 | survived | int Unseen(int x) { return x + 6; }
src/part/Small.cpp | 3 | 7 becomes 8 | survived | int Unseen(int x) { return x + 8; }
src/part/Small.cpp | 3 | returns {} | survived | int Unseen(int x) { return {}; }
~4 mutants: 0 killed, 0.0 % of those that change behaviour; 4 survived, 0 same behaviour, 0 same object code, 0 not compiled
~exit code 1" "$(run src/part/Small.cpp:3 --table survived.tsv | sed '/^src/!s/^/~/' | LC_ALL=C sort)"
expect "survivors alone, once more" "4 mutants: 0 killed, 0.0 % of those that change behaviour; 4 survived, 0 same behaviour, 0 same object code, 0 not compiled
exit code 1" "$(run --again survived.tsv | tail -n 2)"
expect "one that is known to behave the same" "src/part/Small.cpp | 5 | returns {} | same behaviour | int Known(int x) { return {}; }
1 mutants: 0 killed; 0 survived, 1 same behaviour, 0 same object code, 0 not compiled" "$(run src/part/Small.cpp:5)"
expect "a step the other way never ends" "killed by time limit in Small.Steps" \
    "$(run src/part/Small.cpp:8 | grep -F -e '-- becomes ++' | cut -d'|' -f4 | sed 's/^ //; s/ $//')"
expect "a program that ends itself" "killed by crash in Small.Steps" \
    "$(run src/part/Small.cpp:9 | grep -F 'returns {}' | cut -d'|' -f4 | sed 's/^ //; s/ $//')"
expect "the same choice for a seed" "$(run src/part --count 5 --seed 3 --list)" "$(run src --count 5 --seed 3 --list)"
expect "a path that isn't there" "There is no src/other.
exit code 1" "$(run src/other 2>&1)"
expect "the tree stays as it is" "src/part/Small.cpp
src/part/Small.h" "$(find src -type f | LC_ALL=C sort)"
[ "$failures" -eq 0 ]
