"""Finds the places of a C++ source that can be mutated, and writes all mutants into one copy of it.

Every mutant is an expression or a statement behind mutation::is(<number>), so that one build holds all of
them. No line moves: the compiler's line numbers stay those of the original.
"""

import re
import zlib
from dataclasses import dataclass, field


@dataclass
class Mutant:
    file: str
    line: int
    last_line: int
    kind: str
    text: str
    number: int = -1

    @property
    def key(self):
        return f"{self.file}: {self.kind} `{self.text}`"

    @property
    def lot(self):
        """What decides whether it is tried: mutants that only their number tells apart go together."""
        return zlib.crc32(re.sub(r" \(\d+\)( in)? `", r"\1 `", self.key, count=1).encode())


@dataclass
class Edit:
    start: int
    end: int
    # (kind, replacement) for an expression; the replaced text is the original with the edits inside it
    variants: list = field(default_factory=list)
    shape: str = "expression"
    middle: int = 0


def masked(source):
    """The source with comments, literals and preprocessor lines blanked, at the same positions."""
    pattern = re.compile(
        r'R"\((?:.|\n)*?\)"|//[^\n]*|/\*(?:.|\n)*?\*/|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\''
        r"|^[ \t]*\#(?:[^\n\\]|\\\n|\\.)*", re.M)

    def blank(match):
        text = match.group()
        if text[0] in "\"'R":
            return text[0] + re.sub(r"[^\n]", "_", text[1:-1]) + text[-1]
        return re.sub(r"[^\n]", " ", text)

    return pattern.sub(blank, source)


def without_comments(source, mask, start, end):
    """The text of a range on one line, for a second copy of it."""
    text = "".join(
        " " if m == " " and s != " " else s for s, m in zip(source[start:end], mask[start:end]))
    return re.sub(r"\s+", " ", text).strip()


OPPOSITES = {"<": "<=", ">": ">=", "<=": "<", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&"}
OPERATOR = re.compile(r"(?<= )(<=|>=|==|!=|&&|\|\||<|>)(?= )")
DECLARATION = re.compile(r"^\s*(const\s+|static\s+)*(auto|[A-Za-z_][\w:]*(<[^;=]*>)?)\s*[*&]*\s+[*&]*\w+\s*(=[^=]|\{|\()")
NUMBER = re.compile(r"(?<![\w.<'])(\d+)(?![\w.'>])")
NO_CONSTANTS = re.compile(r"\b(constexpr|case|static_assert|enum|template|using|namespace)\b")


def numbered(kind, earlier):
    """The kind of one of several alike mutants of a text: "== to !=", "== to != (2)"."""
    return f"{kind} ({earlier + 1})" if earlier else kind


def top_level(text):
    """The text with everything inside brackets blanked."""
    result = []
    depth = 0
    for c in text:
        if c in ")]}":
            depth -= 1
        result.append(c if depth <= 0 else "_")
        if c in "([{":
            depth += 1
    return "".join(result)


class Finder:
    def __init__(self, source):
        self.source = source
        self.mask = masked(source)
        self.edits = []
        self.statements = []

    def find(self):
        self._scan()
        self._swaps()
        self._constants()
        return self.edits

    def _condition(self, start, end):
        """An edit for the boolean expression of a range, if it is one that can stand twice."""
        mask = self.mask[start:end]
        if "{" in mask or not mask.strip() or re.match(r"\s*constexpr\b", mask):
            return
        lead = len(mask) - len(mask.lstrip())
        start, end = start + lead, start + len(mask.rstrip())
        text = without_comments(self.source, self.mask, start, end)
        bare = without_comments(self.mask, self.mask, start, end)
        if len(bare) != len(text):
            bare = text
        variants = [("negate", f"!({text})")]
        operators = list(OPERATOR.finditer(bare))
        for i, match in enumerate(operators):
            if len(operators) == 1 and match.group(1) in ("==", "!="):
                continue
            earlier = sum(1 for other in operators[:i] if other.group(1) == match.group(1))
            kind = numbered(f"{match.group(1)} to {OPPOSITES[match.group(1)]}", earlier)
            variants.append((kind, text[: match.start(1)] + OPPOSITES[match.group(1)] + text[match.end(1):]))
        self.edits.append(Edit(start, end, variants))

    def _control(self, opening, closing):
        inside = self.mask[opening + 1:closing]
        semicolon = top_level(inside).rfind(";")
        start = opening + 1 + semicolon + 1
        if not DECLARATION.match(self.mask[start:closing]):
            self._condition(start, closing)

    def _statement(self, start, end, boundary):
        mask = self.mask[start:end]
        start += len(mask) - len(mask.lstrip())
        mask = mask.strip()
        flat = top_level(mask)
        if mask.startswith("return"):
            self._return(start + len("return"), end, mask)
            return
        is_call = re.fullmatch(r"[^\s=]*(\(_*\)|\+\+|--)|(\+\+|--)[^\s=]+", flat)
        is_delete = re.fullmatch(r"delete \S+", flat)
        is_assignment = re.fullmatch(r"[\w:.\[\]*>-]+ ([+|&-]?=) [^=].*", flat, re.S)
        if re.match(r"(Q_OBJECT|Q_|QTEST_|static_assert|using|break|continue|default|goto|throw)", mask):
            is_call = None if not mask.startswith("Q_EMIT") else is_call
        if re.fullmatch(r"Q_EMIT \S+\(_*\)", flat):
            is_call = True
        if not (is_call or is_delete or is_assignment):
            return
        self.edits.append(Edit(start, end + 1, [("remove", "")], "statement"))
        self.statements.append((start, end + 1, boundary, bool(is_call)))

    def _return(self, start, end, mask):
        expression = self.mask[start:end]
        flat = top_level(expression)
        question = flat.find(" ? ")
        if question >= 0:
            self._condition(start, start + question)
        elif OPERATOR.search(flat) or re.match(r"\s*(!|true\b|false\b)", flat):
            self._condition(start, end)

    def _scan(self):
        mask = self.mask
        stack = []  # [bracket, position, control, statement start, kind of its boundary]
        frame = ["{", -1, None, 0, "{"]
        i = 0
        while i < len(mask):
            c = mask[i]
            if c in "([{":
                keyword = None
                if c == "(":
                    match = re.search(r"\b(if|while|for|switch)\s*$", mask[max(0, i - 10):i])
                    keyword = match.group(1) if match else None
                stack.append(frame)
                frame = [c, i, keyword, i + 1, "{"]
            elif c in ")]}":
                closed, opening, keyword = frame[0], frame[1], frame[2]
                frame = stack.pop() if stack else ["{", -1, None, i + 1, "{"]
                if closed == "(" and keyword:
                    if keyword in ("if", "while"):
                        self._control(opening, i)
                    elif keyword == "for":
                        parts = self.mask[opening + 1:i].split(";")
                        if len(parts) == 3 and parts[1].strip():
                            begin = opening + 1 + len(parts[0]) + 1
                            self._condition(begin, begin + len(parts[1]))
                    frame[3], frame[4] = i + 1, "control"
                elif closed == "{" and frame[0] == "{" and not re.match(r"\s*[;,).(?\[]|\s*->", mask[i + 1:i + 40]):
                    frame[3], frame[4] = i + 1, "}"
            elif c == ";" and frame[0] == "{":
                self._statement(frame[3], i, frame[4])
                frame[3], frame[4] = i + 1, ";"
            elif c == ":" and frame[0] == "{" and mask[i - 1] != ":" and mask[i + 1:i + 2] != ":":
                if re.match(r"\s*(case\b|default\b|public|private|protected|Q_SIGNALS)", mask[frame[3]:i]):
                    frame[3], frame[4] = i + 1, "case"
            elif mask.startswith("else", i) and re.match(r"\belse\b", mask[i:i + 5]) and not mask[i - 1].isalnum():
                frame[3], frame[4] = i + 4, "control"
                i += 3
            i += 1

    def _swaps(self):
        used = set()
        for (a, a_end, boundary, a_call), (b, b_end, _, b_call) in zip(self.statements, self.statements[1:]):
            if not (a_call and b_call) or boundary == "control" or a in used:
                continue
            if self.mask[a_end:b].strip() or "{" in self.mask[a:b_end]:
                continue
            used.add(b)
            first = without_comments(self.source, self.mask, a, a_end)
            second = without_comments(self.source, self.mask, b, b_end)
            if first != second:
                self.edits.append(Edit(a, b_end, [("swap", f"{second} {first}")], "pair"))

    def _constants(self):
        for match in NUMBER.finditer(self.mask):
            line_start = self.mask.rfind("\n", 0, match.start()) + 1
            line_end = self.mask.find("\n", match.end())
            line = self.mask[line_start:line_end]
            if NO_CONSTANTS.search(line) or line.strip().startswith(("#", "=")) or "[" in line.split("=")[0][:0]:
                continue
            value = int(match.group(1))
            earlier = sum(1 for other in NUMBER.findall(self.mask[line_start:match.start()]) if int(other) == value)
            kind = numbered(f"{value} to {value + 1}", earlier) + " in"
            self.edits.append(Edit(match.start(), match.end(), [(kind, str(value + 1))], "constant"))


def mutate(file, source, dropped, first_number):
    """The source with all its mutants (but the dropped ones), and their list."""
    finder = Finder(source)
    # outer edits first; of two with the same start the longer one is the outer one
    edits = sorted(finder.find(), key=lambda e: (e.start, -e.end))
    mutants = []

    def number_of(edit, kind, text):
        mutant = Mutant(file, source.count("\n", 0, edit.start) + 1, source.count("\n", 0, edit.end) + 1, kind, text)
        mutants.append(mutant)
        if (mutant.file, mutant.line, mutant.kind, mutant.text) in dropped:
            return None
        # Dropped ones keep their numbers, so that no other file changes.
        mutant.number = first_number + len(mutants) - 1
        return mutant.number

    def emit(start, end, inside):
        out = []
        position = start
        index = 0
        while index < len(inside):
            edit = inside[index]
            nested = []
            index += 1
            while index < len(inside) and inside[index].start < edit.end:
                nested.append(inside[index])
                index += 1
            out.append(source[position:edit.start])
            out.append(emit_edit(edit, [n for n in nested if n.end <= edit.end]))
            position = edit.end
        out.append(source[position:end])
        return "".join(out)

    def emit_edit(edit, nested):
        text = without_comments(source, finder.mask, edit.start, edit.end)
        if edit.shape == "constant":
            line = source[source.rfind("\n", 0, edit.start) + 1:source.find("\n", edit.end)].strip()
            text = line
        alive = [(n, v) for n, v in ((number_of(edit, kind, text), v) for kind, v in edit.variants) if n is not None]
        inner = emit(edit.start, edit.end, nested)
        if not alive:
            return inner
        if edit.shape == "statement":
            return f"{{ if (!mutation::is({alive[0][0]})) {{ {inner} }} }}"
        if edit.shape == "pair":
            return f"if (mutation::is({alive[0][0]})) {{ {alive[0][1]} }} else {{ {inner} }}"
        head = "".join(f"mutation::is({n}) ? ({v}) : " for n, v in alive)
        return f"({head}({inner}))"

    text = emit(0, len(source), edits)
    return text, mutants
