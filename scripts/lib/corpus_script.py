"""What an SMT-LIB 2 script says, as text: what is in force at its first check-sat, its answers."""

from dataclasses import dataclass, field

from corpus_text import TextError, parts, quoted, symbol, top_level, tree

CHECKS = ('check-sat', 'check-sat-assuming')


@dataclass
class Declaration:
    """A command that makes a name known. `sorts` are those of the arguments and of the result,
    none for a definition."""

    name: str
    text: str
    sorts: tuple | None = None


@dataclass
class Assertion:
    text: str


@dataclass
class InForce:
    """What a script says up to its first check-sat: declarations and assertions in their order."""

    logic: str = ''
    items: list = field(default_factory=list)
    sort_aliases: dict = field(default_factory=dict)  # name: (parameters, sort)

    def declared(self):
        """The declared constants and functions: name to sorts."""
        return {
            item.name: item.sorts
            for item in self.items
            if isinstance(item, Declaration) and item.sorts is not None
        }

    def assertions(self):
        return [item.text for item in self.items if isinstance(item, Assertion)]


class _Reader:
    def __init__(self):
        self.state = InForce()
        self.global_declarations = False
        self.levels = []

    def pop(self, count):
        if count == 0:
            return
        if count > len(self.levels):
            raise TextError('more pops than pushes')
        keep = self.levels[-count]
        del self.levels[-count:]
        gone = self.state.items[keep:]
        del self.state.items[keep:]
        if self.global_declarations:
            self.state.items += [item for item in gone if isinstance(item, Declaration)]

    def reset(self):
        self.__init__()

    def reset_assertions(self):
        self.levels = []
        self.state.items = [
            item
            for item in self.state.items
            if isinstance(item, Declaration) and self.global_declarations
        ]

    def add_assertion(self, term):
        """The name of a whole assertion becomes a definition: it may be used further down."""
        name = None
        if term.startswith('('):
            inner = parts(term)
            if inner[0] == '!':
                for keyword, value in zip(inner[2:], inner[3:]):
                    if keyword == ':named':
                        name = value
                term = inner[1] if name is not None else term
        if name is not None:
            text = f'(define-fun {name} () Bool {term})'
            self.state.items.append(Declaration(symbol(name), text))
            term = name
        self.state.items.append(Assertion(term))

    def declare(self, name, argument_sorts, sort, text):
        sorts = tuple(tree(each) for each in argument_sorts) + (tree(sort),)
        self.state.items.append(Declaration(symbol(name), text, sorts))

    def read(self, command):
        """Takes one command; gives False at the end of what is wanted."""
        words = parts(command)
        if not words:
            raise TextError('a command without a name')
        name, arguments = words[0], words[1:]
        match name:
            case 'set-logic':
                self.state.logic = arguments[0]
            case 'set-option':
                if arguments[0] == ':global-declarations':
                    self.global_declarations = arguments[1] == 'true'
            case 'declare-sort':
                self.state.items.append(Declaration(symbol(arguments[0]), command))
            case 'define-sort':
                self.state.items.append(Declaration(symbol(arguments[0]), command))
                parameters = tree(arguments[1])
                self.state.sort_aliases[symbol(arguments[0])] = (parameters, tree(arguments[2]))
            case 'declare-fun':
                self.declare(arguments[0], parts(arguments[1]), arguments[2], command)
            case 'declare-const':
                self.declare(arguments[0], [], arguments[1], command)
            case 'define-const':
                text = f'(define-fun {arguments[0]} () {arguments[1]} {arguments[2]})'
                self.state.items.append(Declaration(symbol(arguments[0]), text))
            case 'define-fun' | 'define-fun-rec' | 'define-funs-rec' | 'declare-datatypes' | (
                'declare-datatype'
            ):
                self.state.items.append(Declaration(symbol(arguments[0]), command))
            case 'assert':
                self.add_assertion(arguments[0])
            case 'push':
                count = int(arguments[0]) if arguments else 1
                self.levels += [len(self.state.items)] * count
            case 'pop':
                self.pop(int(arguments[0]) if arguments else 1)
            case 'reset':
                self.reset()
            case 'reset-assertions':
                self.reset_assertions()
            case 'check-sat':
                return False
            case 'check-sat-assuming':
                for literal in parts(arguments[0]):
                    self.state.items.append(Assertion(literal))
                return False
            case 'exit':
                return False
        return True


def in_force(text):
    """Gives what is in force at the first check-sat of a script, or at its end if it has none."""
    reader = _Reader()
    for command in top_level(text):
        if not reader.read(command):
            break
    return reader.state


def stated_answers(text):
    """Gives for each check-sat of a script the `:status` stated last before it, else None."""
    answers = []
    status = None
    for command in top_level(text):
        words = parts(command)
        if words[0] == 'set-info' and words[1] == ':status':
            status = words[2] if words[2] in ('sat', 'unsat') else None
        elif words[0] in CHECKS:
            answers.append(status)
        elif words[0] == 'exit':
            break
    return answers


def stated_logic(text):
    """Gives the first logic that a script sets, empty if none."""
    for command in top_level(text):
        if command.startswith('('):
            words = parts(command)
            if words and words[0] == 'set-logic':
                return words[1]
    return ''


def sort_text(sort):
    """Gives the text of a sort that is a tree."""
    if isinstance(sort, str):
        return sort if sort.isdigit() else quoted(sort)
    return '(' + ' '.join(sort_text(each) for each in sort) + ')'


def _substitute(sort, values):
    if isinstance(sort, str):
        return values.get(sort, sort)
    return tuple(_substitute(each, values) for each in sort)


def expand_sort(sort, aliases):
    """Gives the sort with every defined name replaced by what it stands for."""
    if isinstance(sort, str):
        return expand_sort(aliases[sort][1], aliases) if sort in aliases else sort
    arguments = tuple(expand_sort(each, aliases) for each in sort[1:])
    if sort[0] not in aliases:
        return sort[:1] + arguments
    parameters, body = aliases[sort[0]]
    others = {name: value for name, value in aliases.items() if name not in parameters}
    return _substitute(expand_sort(body, others), dict(zip(parameters, arguments)))
