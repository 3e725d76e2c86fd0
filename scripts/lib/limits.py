"""Runs the command on inputs at the edge of what anyone will ever give it.

Each case is an input made here, the status the command must end with, and what it must write. Cases
that have a size are run at a quarter of it too: a time that then grows much more than fourfold is a
failure, since nothing may grow faster than the input and the output.
"""

import argparse
import os
import resource
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path
from typing import Callable, Iterator, Optional

# Times under this many seconds say nothing about growth.
SHORTEST_TIME = 0.2
# What fourfold input may cost in time. Four is linear, sixteen quadratic; caches and page faults take
# their share.
MOST_GROWTH = 10.0
# Times are noisy where other work is done: a growth that seems too large is measured so often.
ATTEMPTS = 3


@dataclass
class Case:
    """An input, and what must come of it."""

    name: str
    make: Callable[[int], Iterator[str]]  # the input in pieces, for a size
    size: int = 0  # none: the input is what it is
    options: tuple = ()
    status: int = 0
    message: str = ''  # what standard error must hold, when the input is refused
    holds: str = ''  # what the first megabyte of the output must hold
    bytes_per_byte: float = 100.0  # most memory for a byte of the input and the output, beyond 64 MB


def declared(names, sort='Bool'):
    return ''.join(f'(declare-const {name} {sort})\n' for name in names)


def integer(digits):
    yield '(declare-const x Int)\n(assert (= x ' + '7' * digits + '))\n'


def decimal(digits):
    yield '(declare-const x Real)\n(assert (= x 0.' + '7' * digits + '))\n'


def bit_vector_value(digits):
    yield f'(declare-const x (_ BitVec {4 * digits}))\n(assert (= x #x' + '7' * digits + '))\n'


def widest_bit_vectors(_):
    sort = '(_ BitVec 2147483648)'
    yield f'(declare-const x {sort})\n(assert (bvult (bvnot x) (_ bv5 2147483648)))\n'


def simple_symbol(length):
    yield declared(['a' * length]) + '(assert ' + 'a' * length + ')\n'


def quoted_symbol(length):
    name = '|' + 'a ' * (length // 2) + '|'
    yield declared([name]) + f'(assert {name})\n'


def many_symbols(count):
    for i in range(count):
        yield f'(declare-const symbol_{i} Bool)\n(assert symbol_{i})\n'


def many_sorts(count):
    for i in range(count):
        yield f'(declare-sort S{i} 0)\n(declare-const c{i} S{i})\n(declare-const d{i} S{i})\n'
        yield f'(assert (= c{i} d{i}))\n'


def many_terms(count):
    """Two terms for each unit: a disjunction, and the conjunction that it is joined by."""
    yield declared(f'x{i}' for i in range(4000))
    yield '(assert (and\n'
    for i in range(count // 2):
        yield f'(or x{i % 4000} x{(i // 4000 + i) % 4000})\n'
    yield '))\n'


def nested_lets(depth):
    yield declared(['x0']) + '(assert\n'
    for i in range(depth):
        yield f'(let ((x{i + 1} (not x{i})))\n'
    yield f'x{depth}' + ')' * depth + ')\n'


def nested_lets_v1(depth):
    yield '(benchmark b :extrapreds ((x)) :formula\n'
    yield '(flet ($x0 (not x))\n'
    for i in range(depth - 1):
        yield f'(flet ($x{i + 1} (not $x{i}))\n'
    yield f'$x{depth - 1}' + ')' * depth + ')\n'


def nested_terms(depth):
    yield declared(['x']) + '(assert\n'
    yield '(not ' * depth
    yield 'x' + ')' * depth + ')\n'


def pushes(depth):
    yield declared(['x'])
    for _ in range(depth):
        yield '(push 1)\n(assert x)\n'
    yield '(check-sat)\n'
    for _ in range(depth):
        yield '(pop 1)\n'


def one_large_push(_):
    yield '(push 1000000000)\n'


def macros(levels):
    """Written out, the last would have 2 ** levels leaves."""
    yield '(declare-const x Int)\n(define-fun f0 ((a Int)) Int (+ a 1))\n'
    for i in range(levels):
        yield f'(define-fun f{i + 1} ((a Int)) Int (+ (f{i} a) (f{i} a)))\n'
    yield f'(assert (= (f{levels} x) 0))\n'


def defined_sorts(levels):
    """Written out, the last would have 2 ** levels leaves."""
    yield '(define-sort S0 (T) (Array T T))\n'
    for i in range(levels):
        yield f'(define-sort S{i + 1} (T) (S{i} (Array T T)))\n'


def distinct(count):
    yield '(declare-sort S 0)\n' + declared((f'c{i}' for i in range(count)), 'S')
    yield '(assert (distinct ' + ' '.join(f'c{i}' for i in range(count)) + '))\n'


def brackets(depth):
    yield '(' * depth


def text(contents):
    def make(_):
        yield contents

    return make


CASES = [
    Case('integer, digits', integer, 1_000_000, holds='777)'),
    Case('decimal, digits', decimal, 1_000_000, holds='(/ 7'),
    Case('bit-vector value, digits', bit_vector_value, 250_000, holds='(_ bv'),
    Case('widest bit-vectors, v2', widest_bit_vectors, holds='(_ BitVec 2147483648)'),
    Case('widest bit-vectors, v1', widest_bit_vectors, options=('--to', 'v1'),
         holds='BitVec[2147483648]'),
    Case('simple symbol, bytes', simple_symbol, 10_000_000, holds='(declare-fun aaa'),
    Case('quoted symbol in v1, bytes', quoted_symbol, 10_000_000, options=('--to', 'v1'),
         holds='a_h32_a_h32_'),
    Case('symbols', many_symbols, 1_000_000, holds='(declare-fun symbol_'),
    Case('sorts', many_sorts, 100_000, holds='(declare-sort '),
    Case('terms', many_terms, 10_000_000, holds='(or x'),
    Case('terms, define-fun', many_terms, 2_000_000, options=('--to', 'define-fun'), holds='(or x'),
    Case('nested let', nested_lets, 1_000_000, holds='(not x0)'),
    Case('nested flet of version 1', nested_lets_v1, 1_000_000, holds='(not x)'),
    Case('nested terms', nested_terms, 1_000_000, holds='(not '),
    Case('push', pushes, 1_000_000, holds='(and x x)'),
    Case('push, trace', pushes, 1_000_000, options=('--to', 'trace'), holds='(push 1)'),
    Case('a push of too many levels', one_large_push, status=2, message='in.smt2:1:7: error: '),
    Case('macros, each using the last twice', macros, 100_000, holds='(+ x 1)'),
    Case('sorts, each using the last twice', defined_sorts, 64),
    Case('distinct, constants', distinct, 5_000, holds='(declare-sort ', bytes_per_byte=100.0),
    Case('open brackets', brackets, 5_000_000, status=2, message='in.smt2:1:'),
    Case('a byte 0', text('(declare-const x\0 Bool)\n'), status=2, message='in.smt2:1:17: error: '),
    Case('a byte 0 in quotes', text('(declare-const |x\0| Bool)\n'), status=2,
         message='in.smt2:1:18: error: '),
    Case('half of a pair of surrogates',
         text('(declare-const |\udced\udca0\udc80| Bool)\n(assert |\udced\udca0\udc80|)\n'),
         holds='(declare-fun |\udced\udca0\udc80| () Bool)'),
    Case('no line end at the end', text('(declare-const x Bool)\n(assert x)'), holds='(assert\nx\n)'),
    Case('nothing', text('')),
]


@dataclass
class Run:
    """What the command did with an input."""

    bytes_in: int
    bytes_out: int
    seconds: float
    process_seconds: float  # of the processor
    kilobytes: int
    failure: Optional[str]


def run(case, size, command, folder):
    """Makes the input, runs the command on it and looks at what it did."""
    source, target = folder / 'in.smt2', folder / 'out.smt2'
    # Bytes that are no UTF-8 stand as surrogates in the texts above.
    with open(source, 'w', encoding='utf-8', errors='surrogateescape', newline='') as file:
        file.writelines(case.make(size))
    target.unlink(missing_ok=True)
    error_path = folder / 'err'
    start = time.monotonic()
    with open(error_path, 'wb') as errors:
        process = subprocess.Popen(
            [command, *case.options, 'in.smt2', '-o', 'out.smt2'],
            cwd=folder,
            stdin=subprocess.DEVNULL,
            stderr=errors,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_STACK, (256 * 1024, 256 * 1024)),
        )
        _, wait_status, usage = os.wait4(process.pid, 0)
    seconds = time.monotonic() - start
    process_seconds = usage.ru_utime + usage.ru_stime
    process.returncode = os.waitstatus_to_exitcode(wait_status)
    message = error_path.read_bytes().decode(errors='replace')
    written = b''
    bytes_out = 0
    if target.exists():
        bytes_out = target.stat().st_size
        with open(target, 'rb') as file:
            written = file.read(1 << 20) if bytes_out < 1 << 22 else file.read(1 << 26)
    failure = None
    if process.returncode != case.status:
        failure = f'status {process.returncode} instead of {case.status}: {message[:300]}'
    elif case.status == 0 and case.holds.encode(errors='surrogateescape') not in written:
        failure = f'the output does not hold {case.holds!r}'
    elif case.status != 0 and target.exists():
        failure = 'there is an output'
    elif case.status != 0 and (case.message not in message or message.count('\n') > 3):
        failure = f'the message is {message[:300]!r}'
    result = Run(
        source.stat().st_size, bytes_out, seconds, process_seconds, usage.ru_maxrss, failure
    )
    most = 64 * 1024 + case.bytes_per_byte * (result.bytes_in + result.bytes_out) / 1024
    if result.failure is None and result.kilobytes > most:
        result.failure = f'{result.kilobytes // 1024} MB is more than {int(most) // 1024} MB'
    return result


def check(case, command, folder):
    """Runs a case, at a quarter of its size too where that says something; prints a line for it."""
    result = run(case, case.size, command, folder)
    growth = ''
    if case.size and result.failure is None:
        quarter = run(case, case.size // 4, command, folder)
        least, least_quarter = result.process_seconds, quarter.process_seconds
        bytes_ratio = (result.bytes_in + result.bytes_out) / (quarter.bytes_in + quarter.bytes_out)
        allowed = MOST_GROWTH * max(1.0, bytes_ratio / 4)
        for _ in range(1, ATTEMPTS):
            if least <= allowed * max(least_quarter, SHORTEST_TIME):
                break
            least = min(least, run(case, case.size, command, folder).process_seconds)
            again = run(case, case.size // 4, command, folder)
            least_quarter = min(least_quarter, again.process_seconds)
        growth = f'{least / max(least_quarter, 0.001):.1f}'
        if quarter.failure is not None:
            result.failure = f'at a quarter: {quarter.failure}'
        elif least > allowed * max(least_quarter, SHORTEST_TIME):
            result.failure = f'{growth} times the time of a quarter of the input'
    size = f'{case.size:,}' if case.size else ''
    print(
        f'{case.name:36} {size:>10} {result.bytes_in / 1e6:9.2f} {result.bytes_out / 1e6:9.2f} '
        f'{result.seconds:8.2f} {growth:>6} {result.kilobytes / 1024:8.0f}  '
        f'{result.failure or "as it must be"}',
        flush=True,
    )
    return result.failure is None


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--brumlin', required=True, metavar='PATH', help='the command to run')
    parser.add_argument('--only', default='', metavar='TEXT', help='only cases whose name holds this')
    options = parser.parse_args()
    print(f'{"case":36} {"size":>10} {"MB in":>9} {"MB out":>9} {"seconds":>8} {"x 4":>6} {"MB":>8}')
    command = os.path.abspath(options.brumlin)
    with tempfile.TemporaryDirectory(prefix='limits-') as folder:
        results = [check(case, command, Path(folder)) for case in CASES if options.only in case.name]
    return 0 if results and all(results) else 1


if __name__ == '__main__':
    sys.exit(main())
