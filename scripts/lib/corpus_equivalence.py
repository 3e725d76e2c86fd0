"""One script that is unsatisfiable exactly when a document means what its input means.

It holds the input's own declarations, definitions and assertions (those in force at the first
check-sat), and the document's formula. The document's declarations are checked against the input's
and left out; symbols made up while the input was read are defined.
"""

from dataclasses import dataclass, field

from corpus_script import Assertion, Declaration, expand_sort, in_force, sort_text
from corpus_text import parts, quoted, symbol, top_level, tree

# z3 has solvers for difference logic that give wrong answers where the two formulas are compared.
WIDER_LOGIC = {'QF_IDL': 'QF_LIA', 'QF_RDL': 'QF_LRA'}


class NotComparable(Exception):
    """There is no such script for this input; the message says why."""


class Differs(Exception):
    """The document is wrong, whatever its formula means; the message says how."""


@dataclass
class Document:
    """What a document of one formula says. `sorts` are the declared uninterpreted ones."""

    symbols: dict = field(default_factory=dict)
    sorts: list = field(default_factory=list)
    formula: str = ''
    logic: str = ''


def read_document(text):
    """Takes a version 2 document apart: declarations, then one assertion."""
    document = Document()
    for command in top_level(text):
        words = parts(command)
        match words[0]:
            case 'declare-sort':
                document.sorts.append(symbol(words[1]))
            case 'declare-fun':
                sorts = tuple(tree(each) for each in parts(words[2])) + (tree(words[3]),)
                name = symbol(words[1])
                if name in document.symbols:
                    raise Differs(f'{name} is declared twice')
                document.symbols[name] = sorts
            case 'assert':
                if document.formula:
                    raise Differs('there is more than one assertion')
                document.formula = words[1]
            case 'set-logic':
                document.logic = words[1]
            case 'set-info' | 'check-sat':
                pass
            case other:
                raise Differs(f'unexpected command {other}')
    if not document.formula:
        raise Differs('nothing is asserted')
    return document


class SortNames:
    """Finds which sort of the input each invented sort name of the document stands for."""

    def __init__(self, invented):
        self.invented = set(invented)
        self.meaning = {}

    def match(self, name, written, original):
        """Checks two lists of sorts against each other."""
        open_pairs = [(written, original)]
        while open_pairs:
            ours, theirs = open_pairs.pop()
            if isinstance(ours, str) and ours in self.invented:
                if self.meaning.setdefault(ours, theirs) != theirs:
                    known = self.meaning[ours]
                    raise Differs(f'{ours} stands for {known} and, in {name}, {theirs}')
            elif isinstance(ours, tuple) and isinstance(theirs, tuple) and len(ours) == len(theirs):
                open_pairs += zip(ours, theirs)
            elif ours != theirs:
                raise Differs(f'{name} is declared with {written}, not {original}')

    def finish(self):
        """Two names must not stand for one sort: the document would tell its values apart."""
        meanings = list(self.meaning.values())
        if len(set(meanings)) != len(meanings):
            raise Differs(f'two names stand for one sort: {self.meaning}')

    def text(self, sort):
        """Gives the text of a sort of the document with the input's names."""
        if isinstance(sort, str):
            if sort in self.invented:
                if sort not in self.meaning:
                    raise NotComparable(f'no symbol tells what {sort} stands for')
                return sort_text(self.meaning[sort])
            return sort_text(sort)
        return '(' + ' '.join(self.text(each) for each in sort) + ')'


def read_introduced(text):
    """Takes the definitions of made-up symbols apart: their texts by name, in order; and the names
    of those that have none."""
    definitions = {}
    for command in top_level(text):
        definitions[symbol(parts(command)[1])] = command
    without = set()
    for line in text.splitlines():
        if line.startswith('; ') and line.endswith(': distinct'):
            without.add(symbol(line[2 : -len(': distinct')]))
    return definitions, without


@dataclass
class Comparison:
    script: str
    one_way: bool  # only that the document implies the input


def compare(original_text, document_text, introduced_text):
    """Makes the script. Throws NotComparable or Differs."""
    original = in_force(original_text)
    document = read_document(document_text)
    definitions, without_definition = read_introduced(introduced_text)
    declared = original.declared()
    names = SortNames(document.sorts)
    made_up = []
    for name, sorts in document.symbols.items():
        if name in definitions or name in without_definition:
            made_up.append(name)
        elif name in declared:
            theirs = tuple(expand_sort(sort, original.sort_aliases) for sort in declared[name])
            names.match(name, sorts, theirs)
        else:
            raise NotComparable(f'{name} is not a symbol in force at the first check-sat')
    names.finish()

    lines = []
    # The document's logic holds what the input's holds.
    if document.logic:
        lines.append(f'(set-logic {WIDER_LOGIC.get(document.logic, document.logic)})')
    known = {item.name for item in original.items if isinstance(item, Declaration)}
    known.update(definitions)
    prefix = 'compared'
    while any(name.startswith(prefix) for name in known):
        prefix += '_'
    conjuncts = []
    for item in original.items:
        if isinstance(item, Assertion):
            conjuncts.append(f'{prefix}_{len(conjuncts)}')
            lines.append(f'(define-fun {conjuncts[-1]} () Bool {item.text}\n)')
        else:
            lines.append(item.text)
    one_way = False
    for name, text in definitions.items():
        lines.append(text)
    for name in made_up:
        if name in without_definition:
            one_way = True
            *arguments, result = document.symbols[name]
            arguments = ' '.join(names.text(sort) for sort in arguments)
            lines.append(f'(declare-fun {quoted(name)} ({arguments}) {names.text(result)})')
    lines.append(f'(define-fun {prefix}_original () Bool (and true {" ".join(conjuncts)}))')
    lines.append(f'(define-fun {prefix}_written () Bool {document.formula})')
    relation = '=>' if one_way else '='
    lines.append(f'(assert (not ({relation} {prefix}_written {prefix}_original)))')
    lines.append('(check-sat)')
    return Comparison('\n'.join(lines) + '\n', one_way)
