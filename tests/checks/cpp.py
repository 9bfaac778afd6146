"""Reads C++ sources as far as the checks need it: words without comments and texts, blocks and what opens them."""

import re
from dataclasses import dataclass, field

# Comments, texts, numbers, names, and signs of one character but for those that would mislead.
TOKEN = re.compile(
    r"""(?P<skip>//(?:[^\n\\]|\\.|\\\n)*|/\*.*?\*/)
      |(?P<raw>(?:u8|[uUL])?R"(?P<mark>[^\s()\\]{0,16})\(.*?\)(?P=mark)")
      |(?P<text>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*")
      |(?P<char>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
      |(?P<number>\.?\d(?:[eEpP][+-]|'(?=[0-9a-fA-F])|[\w.])*)
      |(?P<name>[A-Za-z_]\w*)
      |(?P<directive>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
      |(?P<sign>::|->|==|!=|<=|>=|&&|\|\||[+*/%&|^-]=|\S)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)


@dataclass
class Token:
    kind: str
    text: str
    line: int


def tokens(source):
    """Names, numbers, texts and signs with their lines; comments and directives are left out."""
    found, at, line = [], 0, 1
    for match in TOKEN.finditer(source):
        line += source.count("\n", at, match.start())
        at = match.start()
        kind = match.lastgroup if match.lastgroup != "mark" else "raw"
        if kind not in ("skip", "directive"):
            found.append(Token(kind, match.group(), line))
    return found


def number_of(text):
    """Value of a whole number, None of any other."""
    digits = text.replace("'", "").lower()
    digits = digits.rstrip("ul")
    try:
        if re.fullmatch(r"0[0-7]+", digits):
            return int(digits, 8)
        return int(digits, 0)
    except ValueError:
        return None


OPENING, CLOSING = {"(": ")", "[": "]", "{": "}"}, {")", "]", "}"}


def closing_of(found, start):
    """Index of the bracket that closes the one at `start`, or the last index."""
    depth = 0
    for i in range(start, len(found)):
        if found[i].text in OPENING and found[i].kind == "sign":
            depth += 1
        elif found[i].text in CLOSING and found[i].kind == "sign":
            depth -= 1
            if depth == 0:
                return i
    return len(found) - 1


def arguments(found, opening):
    """The arguments, lists of tokens, between a bracket and the one that closes it."""
    parts, part, depth = [], [], 0
    for token in found[opening:closing_of(found, opening) + 1]:
        if token.kind == "sign" and token.text in OPENING:
            depth += 1
            if depth == 1:
                continue
        elif token.kind == "sign" and token.text in CLOSING:
            depth -= 1
            if depth == 0:
                break
        elif token.text == "," and depth == 1:
            parts.append(part)
            part = []
            continue
        part.append(token)
    return parts + [part] if part or parts else []


@dataclass
class Block:
    """What stands in braces: "namespace", "class", "enum", "function" or "value" (a list of values)."""
    kind: str
    name: str
    first: int  # line of the first word of what opens it
    last: int = 0
    begin: int = 0  # indexes of its braces among the tokens
    end: int = 0
    members: int = 0  # data members, of a class


def without_templates(words):
    """Words without what stands between angle brackets after a name."""
    kept, depth = [], 0
    for i, word in enumerate(words):
        if word.text == "<" and (depth or (i and words[i - 1].kind == "name" and words[i - 1].text != "operator")):
            depth += 1
        elif word.text == ">" and depth:
            depth -= 1
        elif not depth:
            kept.append(word)
    return kept


def kind_of(words):
    """Kind and name of the block that these words open, in a namespace or a class."""
    plain = without_templates(words)
    texts = [word.text for word in plain]
    if "namespace" in texts[:2] or (texts[:1] == ["extern"] and len(texts) == 2):
        return "namespace", texts[-1]
    if "enum" in texts and "(" not in texts:
        return "enum", texts[-1]
    # A bracket before any "=" makes a function; operator= has its sign inside the name.
    depth, bracket = 0, None
    for i, text in enumerate(texts):
        if text == "(" and depth == 0 and bracket is None:
            bracket = i
        if text == "=" and depth == 0 and not (i and texts[i - 1] == "operator"):
            return "value", ""
        depth += text == "("
        depth -= text == ")"
    if bracket is not None and not is_class(texts, bracket):
        return "function", name_before(texts, bracket)
    for word in ("class", "struct", "union"):
        if word in texts:
            rest = texts[texts.index(word) + 1:]
            if ":" in rest:
                rest = rest[:rest.index(":")]
            return "class", next((text for text in reversed(rest) if text not in ("final", ")")), "")
    return "value", ""


def is_class(texts, bracket):
    """Whether a bracket belongs to a class with an attribute: class Q_DECL_EXPORT(x) Name, alignas(8)."""
    return bracket >= 2 and texts[0] in ("class", "struct", "union") and ":" not in texts[:bracket]


def name_before(texts, bracket):
    start = bracket - 1
    if start >= 1 and texts[start - 1] == "operator":
        start -= 1
    while start >= 2 and texts[start - 1] == "::":
        start -= 2
    if start >= 1 and texts[start - 1] == "~":
        start -= 1
    return "".join(texts[max(start, 0):bracket])


NO_MEMBER = {"using", "typedef", "friend", "static", "template", "static_assert", "enum", "extern", "operator"}


def members_of(words):
    """How many data members a statement in a class declares."""
    plain = [word.text for word in without_templates(words)]
    while plain and plain[0] in ("public", "protected", "private", "signals", "slots", "Q_OBJECT", "Q_SIGNALS", ":"):
        plain.pop(0)
    if not plain or NO_MEMBER & set(plain):
        return 0
    if plain[0] in ("class", "struct", "union") and len(plain) == 2:
        return 0
    if plain[0] == "alignas":
        plain = plain[plain.index(")") + 1:]
    depth, count, seen_value = 0, 1, False
    for i, text in enumerate(plain):
        if text in OPENING:
            if text == "(" and depth == 0 and not seen_value:
                if plain[i + 1:i + 2] != ["*"]:
                    return 0
                seen_value = True  # a pointer to a function
            depth += 1
        elif text in CLOSING:
            depth -= 1
        elif text == "=" and depth == 0:
            seen_value = True
        elif text == "," and depth == 0:
            count += 1
            seen_value = False
    return count if len(plain) > 1 else 0


@dataclass
class Shape:
    blocks: list = field(default_factory=list)

    def of(self, kind):
        return [block for block in self.blocks if block.kind == kind]


def shape(found):
    """Namespaces, classes with their members, and outermost functions of a file."""
    result, stack, words, i = Shape(), [], [], 0
    while i < len(found):
        token = found[i]
        if token.kind == "sign" and token.text == "{":
            kind, name = kind_of(words)
            block = Block(kind, name, words[0].line if words else token.line, begin=i)
            if is_inside_brackets(words):
                i = closing_of(found, i)  # a value of an argument: f(int a = {})
            elif in_initialisers(words):
                i = closing_of(found, i)
                words = words + [Token("sign", "(", token.line), Token("sign", ")", token.line)]
            elif kind in ("namespace", "class"):
                result.blocks.append(block)
                stack.append(block)
                words = []
            elif kind == "value":
                i = closing_of(found, i)
                words = words + [Token("sign", "=", token.line)]
            else:
                i = closing_of(found, i)
                block.end, block.last = i, found[i].line
                result.blocks.append(block)
                words = []
        elif token.kind == "sign" and token.text == "}":
            if stack:
                block = stack.pop()
                block.end, block.last = i, token.line
            words = []
        elif token.kind == "sign" and token.text == ";":
            if stack and stack[-1].kind == "class" and words:
                stack[-1].members += members_of(words)
            words = []
        elif token.text == ":" and words and words[-1].text in ("public", "protected", "private", "signals", "slots",
                                                               "Q_SIGNALS"):
            words = []
        else:
            if not (words == [] and token.text in ("Q_OBJECT", "Q_GADGET")):
                words.append(token)
        i += 1
    return result


def is_inside_brackets(words):
    texts = [word.text for word in words if word.kind == "sign"]
    return texts.count("(") > texts.count(")")


def in_initialisers(words):
    """Whether a brace after these words gives a member its value: Name::Name(...) : mA{...}, mB"""
    texts = [word.text for word in without_templates(words)]
    depth, after, colon = 0, False, False
    for text in texts:
        depth += text in OPENING
        depth -= text in CLOSING
        if depth == 0 and text == ")":
            after = True
        elif depth == 0 and text == ":" and after:
            colon = True
    return colon and bool(texts) and (texts[-1] not in (")", "}") and re.fullmatch(r"[A-Za-z_]\w*", texts[-1])
                                      is not None and texts[-1] not in ("const", "noexcept", "override"))
