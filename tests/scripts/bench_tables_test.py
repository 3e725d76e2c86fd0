"""Tests of the tables that scripts/bench writes. Run by scripts/check-python."""

import json
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / 'scripts' / 'lib'))

import bench_tables  # noqa: E402


def run(name, milliseconds, **counters):
    return {
        'name': name + '/iterations:1',
        'run_type': 'iteration',
        'cpu_time': milliseconds,
        'real_time': milliseconds,
        **counters,
    }


class Tables(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.directory = Path(holder.name)

    def write(self, name, runs):
        context = {'date': '2026-01-02T03:04', 'num_cpus': 2, 'mhz_per_cpu': 9, 'load_avg': [1]}
        content = {'context': context, 'benchmarks': runs}
        (self.directory / f'{name}.json').write_text(json.dumps(content), encoding='utf-8')

    def test_the_median_counts_and_rivals_are_ratios(self):
        self.write(
            'building',
            [
                run('dag/brumlin', 4.0, nodes=20000, memory=1000000),
                run('dag/brumlin', 90.0, nodes=20000, memory=1000000),
                run('dag/brumlin', 2.0, nodes=20000, memory=1000000),
                run('dag/z3', 14.0, nodes=20000, memory=3500000),
            ],
        )
        last = bench_tables.building(self.directory).splitlines()[-1]
        self.assertEqual(last, '| dag | 200 | 50.0 | 3.5 | 3.5 |  |  | 3 |')

    def test_aggregates_and_failures_do_not_count(self):
        self.write(
            'reading',
            [
                run('lets/brumlin', 3.0, bytes=1000000, memory=2000000),
                {**run('lets/brumlin_median', 7.0), 'run_type': 'aggregate'},
                {**run('lets/z3', 1.0), 'error_occurred': True},
            ],
        )
        last = bench_tables.reading(self.directory).splitlines()[-1]
        self.assertEqual(last, '| lets | 3 | 2.0 |  |  | 1 |')

    def test_printing_compares_node_by_node_and_with_the_bound(self):
        self.write(
            'printing-dag',
            [
                run('brumlin/v2', 10.0, nodes=50000, bytes=1000000, memory=3000000),
                run('bound/ostream', 5.0, nodes=50000, bytes=2000000),
                run('z3', 25.0, nodes=50000, bytes=1000000),
                run('cvc5', 0.6, nodes=100, bytes=1000),
            ],
        )
        last = bench_tables.printing(self.directory).splitlines()[-1]
        self.assertEqual(last, '| dag, v2 | 200 | 20 | 60 | 2.5 | 30 | 0.25 | 1 |')

    def test_what_other_processes_print_is_timed_by_them(self):
        printed = {**run('brumlin/v2', 10.0, nodes=50000, bytes=1000000), 'cpu_time': 0.1}
        self.write('printing-dag', [printed, run('bound/ostream', 5.0, nodes=50000, bytes=2000000)])
        last = bench_tables.printing(self.directory).splitlines()[-1]
        self.assertEqual(last, '| dag, v2 | 200 | 20 |  |  |  | 0.25 | 1 |')

    def test_growth_has_a_column_for_each_size(self):
        sizes = ((1000, 1.0), (10000, 20.0))
        self.write(
            'growth-tree',
            [run(f'v1/{size}', time, nodes=size, memory=size * 70) for size, time in sizes],
        )
        last = bench_tables.growth(self.directory).splitlines()[-1]
        self.assertEqual(last, '| tree, v1 | 1000 | 2000 | 70 | 70 |')

    def test_a_table_replaces_what_stood_in_its_place(self):
        self.write('building', [])
        document = self.directory / 'document.md'
        places = [
            f'<!-- table {make.__name__} -->\nold\n<!-- end of table -->'
            for make in bench_tables.TABLES
        ]
        document.write_text('before\n' + '\n'.join(places) + '\nafter\n', encoding='utf-8')
        bench_tables.main(self.directory, document)
        text = document.read_text(encoding='utf-8')
        self.assertNotIn('old', text)
        self.assertTrue(text.startswith('before\n'))
        self.assertTrue(text.endswith('<!-- end of table -->\nafter\n'))
        self.assertIn('Measured on 2026-01-02 with 2 processors of 9 MHz', text)

    def test_a_document_without_a_place_is_refused(self):
        document = self.directory / 'document.md'
        document.write_text('nothing\n', encoding='utf-8')
        with self.assertRaises(SystemExit):
            bench_tables.main(self.directory, document)


if __name__ == '__main__':
    unittest.main()
