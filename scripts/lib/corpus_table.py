"""What the checks of all files gave, as tables and lists for the reader."""

from collections import Counter

from corpus_check import FORMS

VERDICTS = (
    'agreed',
    'agreed one way',
    'disagreed',
    'refused',
    'undecided',
    'crashed',
    'not compared',
)
JUDGES = (
    ('v1', 'boolector'),
    ('v1', 'z3, read back'),
    ('v2', 'z3'),
    ('v2', 'cvc5'),
    ('v2', 'equivalence'),
    ('v2', 'equivalence, cvc5'),
    ('define-fun', 'z3'),
    ('define-fun', 'cvc5'),
    ('terms', 'z3'),
    ('terms', 'cvc5'),
    ('trace', 'z3'),
    ('trace', 'cvc5'),
)


def print_columns(rows, out):
    """Prints rows of cells; all but the first two columns to the right."""
    widths = [max(len(str(row[i])) for row in rows) for i in range(len(rows[0]))]
    for row in rows:
        cells = [
            str(cell).ljust(width) if i < 2 else str(cell).rjust(width)
            for i, (cell, width) in enumerate(zip(row, widths))
        ]
        print('  '.join(cells).rstrip(), file=out)


def print_counted(heading, counted, out):
    """Prints (reason, names) pairs, the most frequent first."""
    if not counted:
        return
    print(f'\n{heading}', file=out)
    for reason, names in sorted(counted.items(), key=lambda pair: (-len(pair[1]), pair[0])):
        shown = ', '.join(names[:3]) + (', ...' if len(names) > 3 else '')
        print(f'  {len(names):4}  {reason}  [{shown}]', file=out)


class Summary:
    """Counts the reports of all files."""

    def __init__(self, reports):
        self.reports = sorted(reports, key=lambda report: report.name)

    def failures(self):
        """Gives (file, what is wrong) for everything that must not be."""
        found = []
        for report in self.reports:
            for form, written in report.forms.items():
                if written.kind == 'failed':
                    found.append((report.name, f'{form}: {written.reason}'))
            for (form, judge), verdict in report.verdicts.items():
                if verdict.kind in ('disagreed', 'refused'):
                    found.append(
                        (report.name, f'{form}, {judge}: {verdict.kind}: {verdict.detail}')
                    )
            for note in report.notes:
                found.append((report.name, note))
        return found

    def read(self):
        """The number of files that the command read: that it did not refuse in every form."""
        return sum(
            any(written.kind in ('written', 'inexpressible') for written in report.forms.values())
            for report in self.reports
        )

    def print(self, out):
        self.print_forms(out)
        self.print_verdicts(out)
        self.print_details(out)

    def print_forms(self, out):
        rows = [('form', '', 'files', 'read', 'refused', 'written', 'inexpressible', 'failed')]
        for form in FORMS:
            kinds = Counter(
                report.forms[form].kind for report in self.reports if form in report.forms
            )
            rows.append(
                (
                    form,
                    '',
                    sum(kinds.values()),
                    kinds['written'] + kinds['inexpressible'],
                    kinds['refused'],
                    kinds['written'],
                    kinds['inexpressible'],
                    kinds['failed'],
                )
            )
        print_columns(rows, out)
        reasons = {}
        for report in self.reports:
            for form, written in report.forms.items():
                if written.kind in ('refused', 'inexpressible'):
                    heading = 'any form' if written.kind == 'refused' else form
                    names = reasons.setdefault(f'{written.kind} ({heading}): {written.reason}', [])
                    if report.name not in names:
                        names.append(report.name)
        print_counted('Not written:', reasons, out)

    def print_verdicts(self, out):
        rows = [('form', 'judge', 'files') + VERDICTS]
        for form, judge in JUDGES:
            kinds = Counter(
                report.verdicts[form, judge].kind
                for report in self.reports
                if (form, judge) in report.verdicts
            )
            if kinds:
                counts = tuple(kinds[kind] for kind in VERDICTS)
                rows.append((form, judge, sum(kinds.values())) + counts)
        print('\nWhat the judges say of what was written:', file=out)
        print_columns(rows, out)

    def print_details(self, out):
        reasons = {}
        for report in self.reports:
            for (form, judge), verdict in report.verdicts.items():
                if verdict.kind in ('undecided', 'crashed', 'not compared', 'agreed one way'):
                    key = f'{form}, {judge}: {verdict.kind}: {verdict.detail}'
                    reasons.setdefault(key, []).append(report.name)
        print_counted('Not decided:', reasons, out)
        failures = self.failures()
        if failures:
            print('\nWrong:', file=out)
            for name, what in failures:
                print(f'  {name}: {what}', file=out)
