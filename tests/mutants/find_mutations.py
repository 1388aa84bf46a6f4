# SPDX-License-Identifier: MIT
# Finds where a C++ source can be changed into one that still compiles and does something else. It reads tokens, not a
# tree, and leans on the project's format: an operator between two operands has a space on both sides, and what is a type
# has not. Comments, texts, the preprocessor's lines and static_assert are left alone. A change that isn't C++ after all
# costs one compilation.
import bisect
import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""(?P<space>\s+)
      | (?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>(?<![^\n])[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<text>(?:u8|[uUL])?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|(?:u8|[uUL])?"(?:\\.|[^"\\])*"
              |(?:u8|[uUL])?'(?:\\.|[^'\\])+')
      | (?P<number>\.?\d(?:[eEpP][+-]|'[0-9a-zA-Z]|[\w.])*)
      | (?P<name>[A-Za-z_]\w*)
      | (?P<sign><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|.)""",
    re.VERBOSE | re.DOTALL,
)

# The kind of a change, by its sign between two operands.
BETWEEN = {
    "<": ("relation", "<="), "<=": ("relation", "<"), ">": ("relation", ">="), ">=": ("relation", ">"),
    "==": ("relation", "!="), "!=": ("relation", "=="),
    "&&": ("logic", "||"), "||": ("logic", "&&"),
    "+": ("arithmetic", "-"), "-": ("arithmetic", "+"), "*": ("arithmetic", "/"), "/": ("arithmetic", "*"),
    "%": ("arithmetic", "*"), "|": ("arithmetic", "&"), "&": ("arithmetic", "|"), "^": ("arithmetic", "&"),
    "+=": ("arithmetic", "-="), "-=": ("arithmetic", "+="), "*=": ("arithmetic", "/="), "/=": ("arithmetic", "*="),
    "|=": ("arithmetic", "&="), "&=": ("arithmetic", "|="),
}
ASSIGNING = ("=", "+=", "-=", "*=", "/=", "|=", "&=")
CLOSING = {"(": ")", "[": "]", "{": "}"}
NOT_A_STATEMENT = set(
    "alignas auto bool break case catch char class concept const constexpr consteval constinit continue default delete "
    "do double else enum explicit extern float for friend goto if inline int long namespace new noexcept operator "
    "private protected public return short signed sizeof static static_assert struct switch template throw try typedef "
    "typename union unsigned using virtual void volatile while".split()
)


@dataclass(frozen=True)
class Mutation:
    """One change: the bytes from `begin` to `end` of the source become `replacement`. Lines keep their numbers."""

    begin: int
    end: int
    line: int
    kind: str
    words: str
    replacement: str

    def apply(self, source):
        return source[: self.begin] + self.replacement + source[self.end :]


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    begin: int
    end: int


class Finder:
    """The mutations of one source, in the order of its tokens."""

    def __init__(self, source):
        self.source = source
        self.line_starts = [0] + [at.end() for at in re.finditer("\n", source)]
        self.tokens = [
            Token(match.lastgroup if match.lastgroup != "mark" else "text", match.group(), match.start(), match.end())
            for match in TOKEN.finditer(source)
        ]
        self.tokens = [token for token in self.tokens if token.kind not in ("comment", "directive", "space")]
        self.partner = self.match_brackets()
        self.found = []

    def match_brackets(self):
        partner, opened = {}, []
        for index, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in CLOSING:
                opened.append(index)
            elif token.text in CLOSING.values() and opened:
                partner[opened[-1]] = index
                partner[index] = opened.pop()
        return partner

    def text(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def add(self, kind, begin, end, replacement, words):
        line = bisect.bisect_right(self.line_starts, begin)
        lines_lost = self.source.count("\n", begin, end) - replacement.count("\n")
        self.found.append(Mutation(begin, end, line, kind, words, replacement + "\n" * lines_lost))

    def replace(self, kind, token, replacement):
        self.add(kind, token.begin, token.end, replacement, f"{token.text} becomes {replacement}")

    def find(self):
        skip_to = 0
        for index, token in enumerate(self.tokens):
            if index < skip_to:
                continue
            if token.text == "static_assert":
                skip_to = self.partner.get(index + 1, index)
            elif token.kind == "number":
                if not self.is_room(index):
                    self.change_number(token)
            elif token.kind == "name":
                self.change_word(index, token)
            elif token.kind == "sign":
                self.change_sign(index, token)
            if self.begins_statement(index):
                self.leave_out(index)
        return sorted(self.found, key=lambda mutation: (mutation.begin, mutation.end, mutation.words))

    def is_room(self, index):
        """How much of a small_vector lies in place changes nothing but the time."""
        begin = self.source.rfind("\n", 0, self.tokens[index].begin)
        return self.text(index + 1) == ">" and "small_vector<" in self.source[begin : self.tokens[index].begin]

    def change_number(self, token):
        whole = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[\d']+)([uUlLzZ]*)", token.text)
        if not whole:
            self.replace("constant", token, f"({token.text} + 1)")
            return
        digits = whole.group(1).replace("'", "")
        octal = digits.startswith("0") and digits.isdigit() and digits != "0"
        value = int(digits, 8 if octal else 0)
        self.replace("constant", token, f"{value + 1}{whole.group(2)}")
        if value > 0:
            self.replace("constant", token, f"{value - 1}{whole.group(2)}")

    def change_word(self, index, token):
        if token.text in ("true", "false"):
            self.replace("constant", token, "false" if token.text == "true" else "true")
        elif token.text in ("if", "while") and self.text(index + 1) == "(":
            self.negate(index + 1)
        elif token.text == "return":
            self.change_return(index)

    def change_sign(self, index, token):
        before = self.tokens[index - 1] if index else None
        if before is None or before.text == "operator":
            return
        apart = self.source[token.begin - 1].isspace() and self.source[token.end : token.end + 1].isspace()
        operand = before.kind in ("number", "name", "text") and before.text != "return" or before.text in (")", "]", "}")
        of_texts = token.text == "+" and any(near.kind == "text" for near in self.tokens[index - 1 : index + 2])
        if apart and operand and token.text in BETWEEN and not of_texts:
            kind, replacement = BETWEEN[token.text]
            self.replace(kind, token, replacement)
        elif token.text in ("!", "~") and not operand:
            self.add("logic", token.begin, token.end, "", f"{token.text} left out")
        elif token.text == "-" and not operand:
            self.add("arithmetic", token.begin, token.end, "", "- left out")
        elif token.text in ("++", "--") and not self.steps_a_loop(index):
            self.replace("arithmetic", token, "--" if token.text == "++" else "++")

    def steps_a_loop(self, index):
        """A loop that steps the other way only takes its time to be killed."""
        at = index
        while at > 0 and self.text(at) not in ("{", "}"):
            at -= 1
            if self.text(at) == ")":
                at = self.partner.get(at, at)
            elif self.text(at) == "(":
                return self.text(at - 1) in ("for", "while")
        return False

    def negate(self, opening):
        closing = self.partner.get(opening)
        if closing is None:
            return
        first, at = opening + 1, opening + 1
        while at < closing:
            if self.text(at) in CLOSING:
                at = self.partner.get(at, at)
            elif self.text(at) == ";":
                first = at + 1
            elif self.text(at) == "=" and not any(self.text(rest) == ";" for rest in range(at, closing)):
                return  # a declaration, which can't be negated
            at += 1
        begin, end = self.tokens[first].begin, self.tokens[closing].begin
        condition = self.source[begin:end]
        self.add("condition", begin, end, f"!({condition})", f"{self.text(opening - 1)} negated")

    def end_of_statement(self, index):
        while index < len(self.tokens) and self.text(index) != ";":
            if self.text(index) in CLOSING.values():
                return None
            index = self.partner.get(index, index) + 1
        return index if index < len(self.tokens) else None

    def change_return(self, index):
        end = self.end_of_statement(index + 1)
        if end is None or end == index + 1:
            return
        first, last = self.tokens[index + 1], self.tokens[end - 1]
        if end == index + 2 and (first.kind == "number" or first.text in ("true", "false", "nullptr")):
            return  # a constant
        if (first.text, last.text) == ("{", "}") and end == index + 3:
            return  # already empty
        replacement = "S_FALSE" if (end == index + 2 and first.text == "S_OK") else "{}"
        self.add("return", first.begin, last.end, replacement, f"returns {replacement}")

    def begins_statement(self, index):
        if self.tokens[index].kind != "name" or self.tokens[index].text in NOT_A_STATEMENT:
            return False
        before = self.text(index - 1)
        if before == ")":
            return self.text(self.partner.get(index - 1, 0) - 1) in ("if", "for", "while")
        return before in (";", "{", "}", "else", "do")

    def leave_out(self, index):
        """A call, an assignment or an output, as a whole; not a declaration."""
        end = self.end_of_statement(index)
        if end is None:
            return
        at, assigns, puts = index, False, False
        while at < end:
            token = self.tokens[at]
            if token.text in ("{", ":", "?") and not assigns:
                return
            if not assigns and at > index and token.kind == "name" and (
                self.tokens[at - 1].kind == "name" or self.text(at - 1) in (">", ">>", "*", "&", "&&")
            ):
                return  # a type before its variable
            assigns = assigns or token.text in ASSIGNING
            puts = puts or token.text == "<<"
            at = self.partner[at] + 1 if token.text in CLOSING and at in self.partner else at + 1
        first, last = self.tokens[index], self.tokens[end - 1]
        what = "assignment" if assigns else "output" if puts else "call" if last.text == ")" else None
        if what:
            self.add("left out", first.begin, last.end, "", f"{what} of {first.text} left out")


def find_mutations(source):
    return Finder(source).find()
