"""Taking SMT-LIB text apart without losing a byte: brackets, strings, quoted symbols, comments."""

import re

# One token; what stands between two tokens is white space. An unfinished string or quoted symbol
# matches up to the end of the text.
TOKEN = re.compile(
    r'(?P<comment>;[^\r\n]*)'
    r'|(?P<open>\()'
    r'|(?P<close>\))'
    r'|(?P<atom>"(?:[^"]|"")*(?:"|\Z)|\|[^|]*(?:\||\Z)|[^\s()";|]+)'
)


class TextError(Exception):
    """The text is no sequence of s-expressions."""


def expressions(text, start=0, end=None):
    """Yields (first, last) of each s-expression that lies directly in text[start:end]."""
    depth = 0
    first = start
    for match in TOKEN.finditer(text, start, len(text) if end is None else end):
        kind = match.lastgroup
        if kind == 'comment':
            continue
        if kind == 'open':
            if depth == 0:
                first = match.start()
            depth += 1
        elif kind == 'close':
            depth -= 1
            if depth < 0:
                raise TextError(f'a closing bracket too many at byte {match.start()}')
            if depth == 0:
                yield first, match.end()
        elif depth == 0:
            yield match.start(), match.end()
    if depth:
        raise TextError('a bracket is not closed')


def top_level(text):
    """Gives the s-expressions of a text, each as its text."""
    return [text[first:last] for first, last in expressions(text)]


def parts(text):
    """Gives what stands directly between the brackets of one expression, each as its text."""
    if not text.startswith('('):
        raise TextError(f'expected an opening bracket: {text[:40]}')
    return [text[first:last] for first, last in expressions(text, 1, len(text) - 1)]


def tree(text):
    """Gives one expression as nested tuples of atoms; for small ones such as sorts. Comments go."""
    stack = [[]]
    for match in TOKEN.finditer(text):
        kind = match.lastgroup
        if kind == 'open':
            stack.append([])
        elif kind == 'close':
            inner = tuple(stack.pop())
            stack[-1].append(inner)
        elif kind == 'atom':
            stack[-1].append(symbol(match.group()))
    if len(stack) != 1 or len(stack[0]) != 1:
        raise TextError(f'expected one expression: {text[:40]}')
    return stack[0][0]


def symbol(text):
    """Gives the name of a symbol: |x| and x are the same one."""
    if len(text) >= 2 and text[0] == '|' and text[-1] == '|':
        return text[1:-1]
    return text


def quoted(name):
    """Gives a text for the symbol with this name that every solver takes."""
    if re.fullmatch(r'[A-Za-z~!@$%^&*_+=<>?/-][A-Za-z0-9~!@$%^&*_+=<>.?/-]*', name):
        return name
    return f'|{name}|'
