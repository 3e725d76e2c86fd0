"""All checks of one file: the command's forms, what the solvers make of them, and equivalence."""

import re
import time
from dataclasses import dataclass, field
from pathlib import Path

import corpus_equivalence as equivalence
from corpus_judges import Limits, Run, Verdict, first_line, judge, run, solver_command
from corpus_script import stated_answers, stated_logic
from corpus_text import TextError

FORMS = ('v1', 'v2', 'define-fun', 'terms', 'trace')

# boolector reads version 1.2 under these names only; the first holds no arrays.
BOOLECTOR_LOGICS = {'QF_BV': 'QF_BV'} | dict.fromkeys(('QF_ABV', 'QF_UFBV', 'QF_AUFBV'), 'QF_AUFBV')
BOOLECTOR_LIMITS = re.compile(
    r"':extrasorts' unsupported|no support for (predicate|function) declarations? with"
)


def read_text(path):
    """Gives the text of a file; bytes that are no UTF-8 and line ends survive write_text()."""
    return Path(path).read_bytes().decode('utf-8', errors='surrogateescape')


def write_text(path, text):
    Path(path).write_bytes(text.encode('utf-8', errors='surrogateescape'))


@dataclass
class Settings:
    """What all files are checked with."""

    brumlin: str
    directory: str  # where outputs go
    limits: Limits
    limits_equivalence: Limits
    limits_command: Limits
    reads_v1: bool
    both_prove: bool = False  # z3 and cvc5 both have to prove equivalence


@dataclass
class Case:
    """A file of the corpus. `answers` are empty when no list gives them."""

    path: str
    logic: str = ''
    answers: list = field(default_factory=list)

    @property
    def name(self):
        return Path(self.path).name


@dataclass
class Written:
    """What became of one form: written, refused (a wrong or unreadable input, with status 2),
    inexpressible (status 1) or failed (any other end)."""

    kind: str
    reason: str = ''


@dataclass
class Report:
    name: str
    seconds: float = 0
    forms: dict = field(default_factory=dict)  # form: Written
    verdicts: dict = field(default_factory=dict)  # (form, judge): Verdict
    notes: list = field(default_factory=list)


def without_place(message, path):
    """Strips the place from a message of the command, so that equal reasons count as one."""
    message = message.removeprefix(path)
    message = re.sub(r'^[\d:]*\s*', '', message)
    return message.removeprefix('error: ')


def write_form(settings, source, form, target, options=()):
    """Makes the command write one form; gives a Written."""
    command = [settings.brumlin, '--to', form, '-o', str(target), *options, source]
    result = run(command, settings.limits_command)
    return classify(result, source)


def classify(result: Run, source):
    errors = [line for line in result.messages.splitlines() if 'warning:' not in line]
    message = without_place(errors[0] if errors else '', source)
    if result.status == 0:
        return Written('written')
    if result.late:
        return Written('failed', 'out of time')
    if result.status in (1, 2) and message:
        return Written('refused' if result.status == 2 else 'inexpressible', message)
    return Written('failed', f'exit status {result.status}: {first_line(result.messages)}')


class Checker:
    """Checks one file; keeps its outputs below the directory of the settings."""

    def __init__(self, settings, case):
        self.settings = settings
        self.case = case
        self.text = read_text(case.path)
        self.report = Report(case.name)
        self.base = Path(settings.directory) / case.name
        self.answers = []

    def path(self, suffix):
        return self.base.with_name(self.base.name + '.' + suffix)

    def check(self):
        start = time.monotonic()
        self.write_forms()
        if any(written.kind == 'written' for written in self.report.forms.values()):
            self.find_answers()
            self.judge_forms()
            self.judge_equivalence()
        self.report.seconds = time.monotonic() - start
        return self.report

    def write_forms(self):
        for form in FORMS:
            options = []
            if form == 'v2':
                options = ['--introduced', str(self.path('introduced'))]
            target = self.path(form + '.txt')
            self.report.forms[form] = write_form(
                self.settings, self.case.path, form, target, options
            )
        for form in ('define-fun', 'terms', 'trace'):
            if self.is_written(form):
                target = self.path(form + '.labelled.txt')
                written = write_form(
                    self.settings, self.case.path, form, target, ['--label', 'd_']
                )
                if written.kind != 'written':
                    self.report.forms[form] = Written('failed', f'with --label: {written.reason}')

    def is_written(self, form):
        return self.report.forms[form].kind == 'written'

    def find_answers(self):
        """The answers that are right: as listed, else as the file states them, else z3's."""
        stated = stated_answers(self.text)
        self.answers = list(self.case.answers) or stated
        if None in self.answers:
            result = run(solver_command('z3', self.case.path), self.settings.limits)
            given = [line for line in result.output.split() if line in ('sat', 'unsat', 'unknown')]
            given += ['unknown'] * (len(self.answers) - len(given))
            self.answers = [
                right if right is not None else answer
                for right, answer in zip(self.answers, given)
            ]

    def judge_forms(self):
        first = self.answers[:1]
        if first:
            if self.is_written('v2'):
                self.ask('v2', 'z3', 'v2.txt', first)
                self.ask('v2', 'cvc5', 'v2.txt', first)
            if self.is_written('define-fun'):
                self.ask('define-fun', 'z3', 'define-fun.txt', first)
                self.ask('define-fun', 'cvc5', 'define-fun.labelled.txt', first)
        if self.is_written('terms'):
            ending = ['sat'] if self.answers else []
            self.ask('terms', 'z3', 'terms.txt', ending)
            self.ask('terms', 'cvc5', 'terms.labelled.txt', ending)
        if self.is_written('trace'):
            self.ask('trace', 'z3', 'trace.txt', self.answers)
            self.ask('trace', 'cvc5', 'trace.labelled.txt', self.answers, incremental=True)
        if self.is_written('v1') and first:
            self.judge_v1(first)

    def ask(self, form, name, suffix, expected, incremental=False, column=None):
        path = str(self.path(suffix))
        verdict = judge(
            name, solver_command(name, path, incremental), self.settings.limits, expected
        )
        if verdict.kind == 'refused' and self.refuses_original(name, verdict.detail, incremental):
            verdict = Verdict(
                'undecided', f'{name} refuses the input for the same reason: {verdict.detail}'
            )
        self.report.verdicts[form, column or name] = verdict

    def refuses_original(self, name, complaint, incremental):
        """Whether a solver has the same complaint of the input as it was."""
        command = solver_command(name, self.case.path, incremental)
        result = run(command, self.settings.limits)

        def reason(text):
            return re.sub(r'.*?"(?:line \d+ column \d+: )?|(?:[^ ]*:)?\d+[:.]\d+:?|[0-9]+', '', text)

        said = (result.output + result.messages).splitlines()
        return reason(complaint) in [reason(line) for line in said]

    def judge_v1(self, first):
        logic = self.case.logic or stated_logic(self.text)
        if logic in BOOLECTOR_LOGICS:
            path = self.path('v1.txt')
            stated = re.search(r'^:logic (\S+)$', read_text(path), re.MULTILINE)
            wanted = BOOLECTOR_LOGICS.get(stated.group(1) if stated else logic)
            if wanted is not None and not (stated and stated.group(1) == wanted):
                path = self.path('v1.boolector.txt')
                write_form(self.settings, self.case.path, 'v1', path, ['--logic', wanted])
            verdict = judge(
                'boolector', solver_command('boolector', str(path)), self.settings.limits, first
            )
            if verdict.kind == 'refused' and BOOLECTOR_LIMITS.search(verdict.detail):
                verdict = Verdict('undecided', f'boolector lacks it: {verdict.detail}')
            self.report.verdicts['v1', 'boolector'] = verdict
        if self.settings.reads_v1:
            self.judge_v1_read_back(first)

    def judge_v1_read_back(self, first):
        target = self.path('v1.v2.txt')
        written = write_form(
            self.settings, str(self.path('v1.txt')), 'v2', target, ['--from', 'v1']
        )
        if written.kind == 'written':
            self.ask('v1', 'z3', 'v1.v2.txt', first, column='z3, read back')
            return
        # Names that version 1 takes may be reserved words of version 2.
        kind = 'undecided' if written.kind == 'inexpressible' else 'disagreed'
        self.report.verdicts['v1', 'z3, read back'] = Verdict(
            kind, f'the benchmark is not read back: {written.reason}'
        )

    def judge_equivalence(self):
        if not self.is_written('v2'):
            return
        verdict, script = self.prove_equivalence()
        self.report.verdicts['v2', 'equivalence'] = verdict
        if self.settings.both_prove and script:
            self.report.verdicts['v2', 'equivalence, cvc5'] = self.judge_proof('cvc5', script)

    def judge_proof(self, name, script):
        """Gives what a solver says of a script of comparison."""
        command = solver_command(name, script)
        verdict = judge(name, command, self.settings.limits_equivalence, ['unsat'])
        if verdict.kind == 'refused' and self.refuses_original(name, verdict.detail, False):
            return Verdict('undecided', f'{name} does not read the input: {verdict.detail}')
        return verdict

    def prove_equivalence(self):
        """Gives z3's verdict, or cvc5's where z3 has none, and the path of the script if any."""
        document, introduced = read_text(self.path('v2.txt')), read_text(self.path('introduced'))
        try:
            comparison = equivalence.compare(self.text, document, introduced)
        except equivalence.Differs as problem:
            return Verdict('disagreed', str(problem)), None
        except (equivalence.NotComparable, TextError) as problem:
            return Verdict('not compared', str(problem)), None
        path = str(self.path('equivalence.smt2'))
        write_text(path, comparison.script)
        return self.judge_comparison(path, comparison.one_way), path

    def judge_comparison(self, path, one_way):
        verdict = self.judge_proof('z3', path)
        if verdict.kind == 'agreed' and one_way:
            return Verdict('agreed one way', 'symbols for a large distinct can have any value')
        if verdict.kind in ('undecided', 'crashed'):
            again = self.judge_proof('cvc5', path)
            if again.kind in ('agreed', 'disagreed'):
                again.detail = (again.detail + ' by cvc5').strip()
                return again
        return verdict
