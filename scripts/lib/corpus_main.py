"""Checks a folder of SMT-LIB scripts with the command and solvers; see scripts/check-corpus."""

import argparse
import multiprocessing
import os
import subprocess
import sys
import tempfile
import time
import traceback
from pathlib import Path

from corpus_check import Case, Checker, Report, Settings
from corpus_judges import Limits
from corpus_table import Summary

USUAL = {'seconds': 5, 'equivalence': 8}
THOROUGH = {'seconds': 60, 'equivalence': 120}


def parse_arguments():
    parser = argparse.ArgumentParser(
        prog='check-corpus',
        description='Writes every *.smt2 file of a folder in every form, lets z3, cvc5 and '
        'boolector answer what was written, and lets z3 prove that it means the same as the file. '
        'DIR/answers.tsv gives the right answers: lines of file, logic and answers, with tabs '
        'between. A file that is not listed has the answers that it states itself, else those of '
        'z3.',
        epilog='The status is 1 when anything is wrong or too few files are read, else 0.',
    )
    parser.add_argument('directory', metavar='DIR')
    parser.add_argument('--brumlin', required=True, metavar='PATH', help='the command to check')
    parser.add_argument(
        '-j', '--jobs', type=int, default=len(os.sched_getaffinity(0)), help='files at a time'
    )
    parser.add_argument(
        '--timeout', type=float, metavar='SECONDS', help='of processor time for a run of a solver'
    )
    parser.add_argument('--thorough', action='store_true', help='give the solvers minutes')
    parser.add_argument(
        '--both', action='store_true', help='have cvc5 prove equivalence too, whatever z3 says'
    )
    parser.add_argument('--memory', type=int, default=4096, metavar='MIB', help='for each solver')
    parser.add_argument(
        '--min-read', type=float, default=99, metavar='PERCENT', help='of the files to be read'
    )
    parser.add_argument('--only', metavar='TEXT', help='check only files with TEXT in their name')
    parser.add_argument('--keep', metavar='FOLDER', help='leave everything that was written there')
    parser.add_argument('--verbose', action='store_true', help='tell what became of each file')
    return parser.parse_args()


def find_cases(directory):
    listed = {}
    answers = Path(directory) / 'answers.tsv'
    if answers.exists():
        for line in answers.read_text(encoding='utf-8').splitlines():
            fields = line.split('\t')
            if len(fields) == 3:
                listed[fields[0]] = (fields[1], fields[2].split())
    cases = []
    for path in sorted(Path(directory).glob('*.smt2'), key=lambda path: -path.stat().st_size):
        logic, right = listed.get(path.name, ('', []))
        cases.append(Case(str(path), logic, right))
    return cases


def reads_v1(brumlin):
    """Whether the command takes benchmarks of version 1.2."""
    text = '(benchmark b :logic QF_UF :formula true)'
    result = subprocess.run(
        [brumlin, '--from', 'v1'], input=text, capture_output=True, text=True, check=False
    )
    return result.returncode == 0


def check(arguments):
    settings, case = arguments
    try:
        return Checker(settings, case).check()
    except Exception:  # pylint: disable=broad-except  # the other files are still of interest
        report = Report(case.name)
        report.notes.append('the check itself went wrong: ' + traceback.format_exc())
        return report


def describe(report):
    """Prints what became of one file."""
    print(f'{report.name} ({report.seconds:.1f} s)')
    for form, written in report.forms.items():
        print(f'  {form}: {written.kind} {written.reason}'.rstrip())
    for (form, judge), verdict in report.verdicts.items():
        print(f'  {form}, {judge}: {verdict.kind} {verdict.detail}'.rstrip())
    sys.stdout.flush()


def main():
    arguments = parse_arguments()
    start = time.monotonic()
    given = THOROUGH if arguments.thorough else USUAL
    seconds = arguments.timeout or given['seconds']
    cases = find_cases(arguments.directory)
    if arguments.only:
        cases = [case for case in cases if arguments.only in case.name]
    if not cases:
        sys.exit(f'check-corpus: there are no *.smt2 files in {arguments.directory}')
    with tempfile.TemporaryDirectory() as scratch:
        directory = arguments.keep or scratch
        Path(directory).mkdir(parents=True, exist_ok=True)
        settings = Settings(
            os.path.abspath(arguments.brumlin),
            directory,
            Limits(seconds, arguments.memory),
            Limits(arguments.timeout or given['equivalence'], arguments.memory),
            Limits(60, arguments.memory),
            reads_v1(arguments.brumlin),
            arguments.both,
        )
        reports = []
        with multiprocessing.Pool(arguments.jobs) as pool:
            tasks = [(settings, case) for case in cases]
            for report in pool.imap_unordered(check, tasks):
                reports.append(report)
                if arguments.verbose:
                    describe(report)
    summary = Summary(reports)
    summary.print(sys.stdout)
    read = summary.read()
    percent = 100 * read / len(cases)
    failures = len(summary.failures())
    if not settings.reads_v1:
        print('\nThe command does not read version 1: its benchmarks were not read back.')
    print(
        f'\n{len(cases)} files, {read} read ({percent:.1f} %, at least {arguments.min_read:g} '
        f'wanted), {failures} wrong, {time.monotonic() - start:.0f} s'
    )
    sys.exit(1 if failures or percent < arguments.min_read else 0)


if __name__ == '__main__':
    main()
