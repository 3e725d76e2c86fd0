"""Writes the results of the benchmarks as tables into a document.

    bench_tables.py RESULTS DOCUMENT

RESULTS is a directory of what Google Benchmark wrote as JSON. In the document each table stands
between the lines `<!-- table NAME -->` and `<!-- end of table -->`.
"""

import json
import re
import statistics
import sys
from pathlib import Path

SHAPES = ('chain', 'ladder', 'tree', 'dag', 'bit-vectors')
PRINTED = (*SHAPES, 'files')
KINDS = ('clauses', 'lets', 'definitions', 'bit-vectors')
RIVALS = ('z3', 'cvc5')
FORMS = ('v1', 'v2', 'v2 to a std::ostringstream', 'define-fun', 'terms', 'trace', 'let-trace')


class Results:
    """The runs of one benchmark program: medians of times by one of its clocks, and the counters."""

    def __init__(self, *paths, clock='cpu_time'):
        self.clock = clock
        self.runs = {}
        self.context = {}
        for path in paths:
            if path.exists():
                self.add(path)

    def add(self, path):
        content = json.loads(path.read_text(encoding='utf-8'))
        self.context = content['context']
        for run in content['benchmarks']:
            if run['run_type'] == 'iteration' and not run.get('error_occurred'):
                name = re.sub(r'/iterations:.*', '', run['name'])
                self.runs.setdefault(name, []).append(run)

    def names(self):
        return list(self.runs)

    def has(self, name):
        return name in self.runs

    def ms(self, name):
        """The median in milliseconds."""
        return statistics.median(run[self.clock] for run in self.runs[name])

    def repetitions(self, name):
        return len(self.runs[name])

    def counter(self, name, counter):
        return self.runs[name][0].get(counter)

    def ns_per_node(self, name):
        return self.ms(name) * 1e6 / self.counter(name, 'nodes')


def table(head, rows):
    lines = ['| ' + ' | '.join(head) + ' |', '|---' + '|--:' * (len(head) - 1) + '|']
    lines += ['| ' + ' | '.join(str(cell) for cell in row) + ' |' for row in rows]
    return '\n'.join(lines)


def times(ratio):
    return f'{ratio:.1f}' if ratio < 10 else f'{ratio:.0f}'


def printing_results(directory, shape):
    """What is printed is printed by other processes, so its time is the one that they report."""
    return Results(directory / f'printing-{shape}.json', clock='real_time')


def printing(directory):
    """For each shape and form: the time, and how many times faster than the others it is."""
    rows = []
    for shape in PRINTED:
        results = printing_results(directory, shape)
        for form in FORMS:
            name = f'brumlin/{form}'
            if not results.has(name):
                continue
            own = results.ns_per_node(name)
            memory = results.counter(name, 'memory')
            nodes = results.counter(name, 'nodes')
            rows.append(
                (
                    f'{shape}, {form}',
                    f'{own:.0f}',
                    f'{results.counter(name, "bytes") / nodes:.0f}',
                    f'{memory / nodes:.0f}' if memory else '',
                    *(
                        times(results.ns_per_node(rival) / own) if results.has(rival) else ''
                        for rival in RIVALS
                    ),
                    f'{bound_share(results, name):.2f}',
                    results.repetitions(name),
                )
            )
    head = (
        'shape, form',
        'ns a node',
        'bytes of text a node',
        'bytes of memory a node',
        'times faster than z3',
        'times faster than cvc5',
        'share of the stream bound',
        'runs',
    )
    return table(head, rows)


def bound_share(results, name):
    """The speed in bytes per second over that of writing tokens to a stream."""
    bound = results.counter('bound/ostream', 'bytes') / results.ms('bound/ostream')
    return results.counter(name, 'bytes') / results.ms(name) / bound


def bounds(directory):
    rows = []
    for shape in PRINTED:
        results = printing_results(directory, shape)
        if not results.names():
            continue
        row = [shape, f'{results.ns_per_node("brumlin/walk"):.0f}']
        for name in ('bound/string', 'bound/ostream'):
            row.append(f'{results.counter(name, "bytes") / results.ms(name) / 1000:.0f}')
        for name in ('bound/kept by trace', 'bound/kept by let-trace'):
            row.append(f'{results.ns_per_node(name):.0f}')
        for rival in RIVALS:
            memory = results.counter(rival, 'memory') if results.has(rival) else None
            row.append(f'{results.ns_per_node(rival):.0f}' if results.has(rival) else '')
            row.append(f'{memory / results.counter(rival, "nodes"):.0f}' if memory else '')
        rows.append(row)
    head = (
        'shape',
        'walk alone, ns a node',
        'tokens to a string, MB/s',
        'tokens to a stream, MB/s',
        'texts kept by a trace, ns a node',
        'by a let-trace, ns a node',
        'z3, ns a node',
        'z3, bytes of memory a node',
        'cvc5, ns a node',
        'cvc5, bytes of memory a node',
    )
    return table(head, rows)


def compared(results, cases, unit, rivals=RIVALS):
    """Rows of this project's run beside those of the rivals, which are named alike."""
    rows = []
    for case in cases:
        own = f'{case}/brumlin'
        if not results.has(own):
            continue
        size = results.counter(own, unit)
        own_memory = results.counter(own, 'memory')
        row = [
            case,
            f'{results.ms(own) * 1e6 / size:.0f}',
            f'{own_memory / size:.1f}' if own_memory else '',
        ]
        for name in (f'{case}/{other}' for other in rivals):
            memory = results.counter(name, 'memory') if results.has(name) else None
            row.append(
                times(results.ms(name) / results.ms(own)) if results.has(name) else ''
            )
            row.append(times(memory / own_memory) if memory and own_memory else '')
        rows.append((*row, results.repetitions(own)))
    return rows


COMPARED = (
    'times faster than z3',
    'times less memory than z3',
    'times faster than cvc5',
    'times less memory than cvc5',
    'runs',
)


def reading(directory):
    rows = compared(Results(directory / 'reading.json'), KINDS, 'bytes')
    head = ('script', 'ns a byte', 'bytes of memory a byte', *COMPARED[:2], 'runs')
    return table(head, [(*row[:5], row[7]) for row in rows])


def building(directory):
    results = Results(directory / 'building.json', clock='real_time')
    rows = compared(results, SHAPES, 'nodes')
    return table(('shape', 'ns a node', 'bytes a node', *COMPARED), rows)


def converting(directory):
    paths = (directory / 'converting.json', directory / 'converting-cvc5.json')
    rivals = (*RIVALS, 'cvc5 --parse-only')
    rows = compared(Results(*paths, clock='real_time'), KINDS, 'bytes', rivals)
    head = [f'times {what} than {name}' for name in rivals for what in ('faster', 'less memory')]
    return table(('script', 'ns a byte', 'bytes of memory a byte', *head, 'runs'), rows)


def growth(directory):
    """Nanoseconds and bytes of memory a node at each size."""
    rows = []
    sizes = []
    for shape in SHAPES:
        results = Results(directory / f'growth-{shape}.json')
        sizes = sizes or sorted({int(name.split('/')[1]) for name in results.names()})
        for entry in dict.fromkeys(name.split('/')[0] for name in results.names()):
            names = [f'{entry}/{size}' for size in sizes]
            memory = [results.counter(name, 'memory') for name in names]
            rows.append(
                (
                    f'{shape}, {entry}',
                    *(f'{results.ns_per_node(name):.0f}' for name in names),
                    *(f'{use / size:.0f}' if use else '' for use, size in zip(memory, sizes)),
                )
            )
    head = ['shape, entry point']
    head += [f'ns a node at {size:,}' for size in sizes]
    head += [f'bytes a node at {size:,}' for size in sizes]
    return table(head, rows)


def machine(directory):
    context = Results(directory / 'building.json').context
    return (
        f'Measured on {context["date"][:10]} with {context["num_cpus"]} processors of '
        f'{context["mhz_per_cpu"]} MHz, load {context["load_avg"][0]:.1f} at the beginning of the '
        'building benchmark.'
    )


TABLES = (printing, bounds, reading, building, converting, growth, machine)


def main(directory, document):
    text = document.read_text(encoding='utf-8')
    for make in TABLES:
        begin, end = f'<!-- table {make.__name__} -->\n', '<!-- end of table -->'
        if text.count(begin) != 1:
            sys.exit(f'{document} has no place for the table {make.__name__}')
        before, rest = text.split(begin)
        text = before + begin + '\n' + make(directory) + '\n\n' + rest[rest.index(end) :]
    document.write_text(text, encoding='utf-8')
    print(f'wrote the tables of {document}')


if __name__ == '__main__':
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(Path(sys.argv[1]), Path(sys.argv[2]))
