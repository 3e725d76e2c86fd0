"""Tests of what scripts/check-corpus is made of. Run by scripts/check-python."""

import os
import stat
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LIBRARY = ROOT / 'scripts' / 'lib'
sys.path.insert(0, str(LIBRARY))

import corpus_equivalence as equivalence  # noqa: E402
from corpus_judges import Limits, judge  # noqa: E402
from corpus_script import expand_sort, in_force, stated_answers  # noqa: E402
from corpus_text import TextError, parts, top_level, tree  # noqa: E402

LIMITS = Limits(10)


class Text(unittest.TestCase):
    def test_brackets_in_strings_symbols_and_comments_do_not_count(self):
        text = '(echo "a ""(" ) ; (\r\n(assert |x)(|)'
        self.assertEqual(top_level(text), ['(echo "a ""(" )', '(assert |x)(|)'])

    def test_parts_are_what_stands_between_the_brackets(self):
        self.assertEqual(parts('(a (b c)"d e"|f g| h)'), ['a', '(b c)', '"d e"', '|f g|', 'h'])
        self.assertEqual(parts('()'), [])

    def test_brackets_must_match(self):
        with self.assertRaises(TextError):
            top_level('(a))')
        with self.assertRaises(TextError):
            top_level('((a)')

    def test_a_symbol_is_the_same_with_bars(self):
        self.assertEqual(tree('(Array |Int| ; x\n (_ BitVec 4))'), ('Array', 'Int', ('_', 'BitVec', '4')))


class Script(unittest.TestCase):
    def test_pop_forgets_assertions_and_declarations(self):
        state = in_force(
            '(declare-const a Bool)(push 1)(declare-const b Bool)(assert b)(pop 1)(assert a)(check-sat)(assert false)'
        )
        self.assertEqual(list(state.declared()), ['a'])
        self.assertEqual(state.assertions(), ['a'])

    def test_global_declarations_outlive_pop(self):
        state = in_force(
            '(set-option :global-declarations true)(push 2)(declare-const b Bool)(assert b)(pop 2)'
        )
        self.assertEqual(list(state.declared()), ['b'])
        self.assertEqual(state.assertions(), [])

    def test_reset_forgets_everything(self):
        state = in_force('(set-logic QF_UF)(declare-const a Bool)(assert a)(reset)(set-logic QF_LIA)')
        self.assertEqual((state.logic, state.items), ('QF_LIA', []))

    def test_assumptions_count_as_assertions(self):
        state = in_force('(declare-const a Bool)(check-sat-assuming (a (not a)))(assert false)')
        self.assertEqual(state.assertions(), ['a', '(not a)'])

    def test_a_named_assertion_becomes_a_definition(self):
        state = in_force('(assert (! (= 1 2) :named |n m|))(assert (not |n m|))')
        self.assertEqual(state.items[0].text, '(define-fun |n m| () Bool (= 1 2))')
        self.assertEqual(state.assertions(), ['|n m|', '(not |n m|)'])

    def test_answers_are_those_stated_before_each_check(self):
        text = '(check-sat)(set-info :status sat)(check-sat)(set-info :status unsat)(check-sat)(exit)(check-sat)'
        self.assertEqual(stated_answers(text), [None, 'sat', 'unsat'])

    def test_defined_sorts_are_expanded(self):
        aliases = {'P': (('A', 'B'), ('Array', 'B', 'A')), 'I': ((), 'Int')}
        self.assertEqual(expand_sort(('P', 'B', 'I'), aliases), ('Array', 'Int', 'B'))


class Equivalence(unittest.TestCase):
    ORIGINAL = (
        '(set-logic QF_UFLIA)(declare-sort S 0)(declare-fun f (S) Int)(declare-fun |a b| () S)'
        '(declare-fun x () Int)(assert (> (f |a b|) x))(assert (= (div x (f |a b|)) 1))(check-sat)'
    )
    HEAD = (
        '(set-logic QF_UFNIA)(declare-sort U0 0)(declare-fun f (U0) Int)(declare-fun |a b| () U0)'
        '(declare-fun x () Int)(declare-fun q () Int)'
    )
    INTRODUCED = '(define-fun q () Int (div x (f |a b|)))'

    def verdict(self, head, formula):
        document = head + f'(assert {formula})(check-sat)'
        comparison = equivalence.compare(self.ORIGINAL, document, self.INTRODUCED)
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / 'script.smt2'
            path.write_text(comparison.script)
            return judge('z3', ['z3', '-smt2', str(path)], LIMITS, ['unsat']).kind

    def test_the_same_meaning_in_other_words_is_accepted(self):
        self.assertEqual(
            self.verdict(self.HEAD, '(not (or (<= (f |a b|) x) (not (= q 1))))'), 'agreed'
        )

    def test_another_meaning_is_found(self):
        self.assertEqual(self.verdict(self.HEAD, '(and (<= x (f |a b|)) (= q 1))'), 'disagreed')

    def test_a_weaker_formula_is_found(self):
        self.assertEqual(self.verdict(self.HEAD, '(< x (f |a b|))'), 'disagreed')

    def test_another_sort_is_found(self):
        with self.assertRaises(equivalence.Differs):
            self.verdict(self.HEAD.replace('(declare-fun x () Int)', '(declare-fun x () Real)'), 'true')

    def test_two_names_for_one_sort_are_found(self):
        head = self.HEAD.replace(
            '(declare-fun |a b| () U0)', '(declare-sort U1 0)(declare-fun |a b| () U1)'
        )
        with self.assertRaises(equivalence.Differs):
            self.verdict(head, 'true')

    def test_a_symbol_from_nowhere_is_not_compared(self):
        with self.assertRaises(equivalence.NotComparable):
            self.verdict(self.HEAD + '(declare-fun z () Bool)', 'z')

    def test_symbols_of_a_distinct_are_compared_one_way(self):
        document = (
            '(set-logic QF_UF)(declare-sort U7 0)(declare-fun c () U7)(declare-fun n (U7) Bool)'
            '(assert (n c))'
        )
        comparison = equivalence.compare(
            '(declare-sort T 0)(declare-fun c () T)(assert true)', document, '; n: distinct\n'
        )
        self.assertTrue(comparison.one_way)
        self.assertIn('(declare-fun n (T) Bool)', comparison.script)


class Judging(unittest.TestCase):
    def kind(self, commands, expected):
        return judge('z3', ['sh', '-c', commands], Limits(1), expected).kind

    def test_each_verdict(self):
        rows = [
            ('echo sat; echo unsat', ['sat', 'unsat'], 'agreed'),
            ('echo sat; echo sat', ['sat', 'unsat'], 'disagreed'),
            ('echo sat; echo sat', ['sat'], 'disagreed'),
            ('echo unknown; echo sat', ['sat', 'unsat'], 'disagreed'),
            ('echo unknown', ['sat'], 'undecided'),
            ('echo sat', ['unknown'], 'undecided'),
            ('echo sat', ['sat', 'unsat'], 'refused'),
            ('echo sat; echo \'(error "line 1: no")\'', ['sat'], 'refused'),
            ('echo \'(error "out of memory")\'', ['sat'], 'undecided'),
            ('kill -SEGV $$', ['sat'], 'crashed'),
            ('while :; do :; done', ['sat'], 'undecided'),
            ('echo unsat; while :; do :; done', ['sat', 'sat'], 'disagreed'),
        ]
        for commands, expected, kind in rows:
            with self.subTest(commands=commands):
                self.assertEqual(self.kind(commands, expected), kind)


# Stands for the command: it writes what CASE says, whatever the form.
FAKE_COMMAND = '''#!/usr/bin/env python3
import sys
arguments = sys.argv[1:]
if '--from' in arguments:
    sys.exit(2)
option = lambda name: arguments[arguments.index(name) + 1]
form = option('--to')
if form == 'v1':
    sys.exit({status} or print('x: error: not in version 1', file=sys.stderr) or 1)
if '--introduced' in arguments:
    open(option('--introduced'), 'w').close()
head = '(set-logic QF_LIA)(declare-fun x () Int)'
asserted = '' if form == 'terms' else '(assert {formula})'
open(option('-o'), 'w').write(head + asserted + '(check-sat)')
sys.exit({status})
'''


class WholeCheck(unittest.TestCase):
    def run_check(self, formula, status=0, options=()):
        with tempfile.TemporaryDirectory() as folder:
            script = '(set-logic QF_LIA)(declare-fun x () Int)(assert (< x 3))(check-sat)'
            (Path(folder) / 'a.smt2').write_text(script)
            (Path(folder) / 'answers.tsv').write_text('a.smt2\tQF_LIA\tsat\n')
            command = Path(folder) / 'command'
            command.write_text(FAKE_COMMAND.format(formula=formula, status=status))
            command.chmod(command.stat().st_mode | stat.S_IXUSR)
            return subprocess.run(
                [sys.executable, LIBRARY / 'corpus_main.py', folder]
                + ['--brumlin', command, '-j1', *options],
                capture_output=True,
                text=True,
                check=False,
                env=dict(os.environ, PYTHONDONTWRITEBYTECODE='1'),
            )

    def test_right_outputs_pass(self):
        result = self.run_check('(not (<= 3 x))')
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertIn('1 files, 1 read (100.0 %, at least 99 wanted), 0 wrong', result.stdout)

    def test_a_wrong_answer_fails(self):
        result = self.run_check('(and (< x 3) (< 3 x))')
        self.assertEqual(result.returncode, 1)
        self.assertIn('a.smt2: v2, z3: disagreed: answer 1 is unsat, not sat', result.stdout)

    def test_another_meaning_with_the_same_answer_fails(self):
        result = self.run_check('(< x 4)')
        self.assertEqual(result.returncode, 1)
        self.assertIn('a.smt2: v2, equivalence: disagreed: answer 1 is sat, not unsat', result.stdout)

    def test_a_second_prover_is_asked_if_wanted(self):
        result = self.run_check('(not (<= 3 x))', options=['--both'])
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertRegex(result.stdout, r'v2 +equivalence, cvc5 +1 +1 ')
        result = self.run_check('(< x 4)', options=['--both'])
        self.assertEqual(result.returncode, 1)
        self.assertIn('a.smt2: v2, equivalence, cvc5: disagreed: answer 1 is sat', result.stdout)

    def test_a_strange_status_fails(self):
        result = self.run_check('(< x 3)', status=7)
        self.assertEqual(result.returncode, 1)
        self.assertIn('a.smt2: v2: exit status 7:', result.stdout)

    def test_too_few_files_read_fails(self):
        result = self.run_check('(< x 3)', status='print("x: error: no", file=sys.stderr) or 2')
        self.assertEqual(result.returncode, 1)
        self.assertIn('1 files, 0 read (0.0 %, at least 99 wanted), 0 wrong', result.stdout)


if __name__ == '__main__':
    unittest.main()
