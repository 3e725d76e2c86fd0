"""Running the command and the solvers within limits, and understanding what they say."""

import os
import re
import resource
import signal
import subprocess
from dataclasses import dataclass

MIB = 1 << 20


@dataclass
class Limits:
    """For one run of a program: seconds of processor time; `patience` times that by the clock."""

    seconds: float
    mebibytes: int = 4096
    patience: float = 10


@dataclass
class Run:
    """What became of a program. `signal` is 0 unless one ended it; `late`: that was our limit."""

    status: int
    output: str
    messages: str
    signal: int = 0
    late: bool = False


def processor_time_of_children():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def run(command, limits):
    """Runs a program with no input, all the stack that the system gives, limited time and memory."""

    def restrict():
        soft = max(1, round(limits.seconds))
        resource.setrlimit(resource.RLIMIT_CPU, (soft, soft + 1))
        resource.setrlimit(resource.RLIMIT_AS, (limits.mebibytes * MIB, limits.mebibytes * MIB))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        stack = resource.getrlimit(resource.RLIMIT_STACK)[1]
        resource.setrlimit(resource.RLIMIT_STACK, (stack, stack))

    process = subprocess.Popen(
        command,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        preexec_fn=restrict,
        start_new_session=True,
    )
    used = processor_time_of_children()
    late = False
    try:
        output, messages = process.communicate(timeout=limits.seconds * limits.patience)
    except subprocess.TimeoutExpired:
        late = True
        # boolector forks; its group is the session that was made for it.
        os.killpg(process.pid, signal.SIGKILL)
        output, messages = process.communicate()
    ended_by = -process.returncode if process.returncode < 0 else 0
    # Told that its time is up, cvc5 aborts, some time after it was told.
    used = processor_time_of_children() - used
    late = late or ended_by == signal.SIGXCPU or (ended_by != 0 and used >= 0.8 * limits.seconds)
    return Run(
        process.returncode,
        output.decode(errors='replace'),
        messages.decode(errors='replace'),
        ended_by,
        late,
    )


@dataclass
class Verdict:
    """What a judge says of a text, held against the answers that are right.

    kind: agreed, disagreed, refused (it does not take the text), undecided (it ran out of time or
    memory, or says unknown) or crashed.
    """

    kind: str
    detail: str = ''


# What the judges of Debian 12 do not know of SMT-LIB; texts that need it are undecided.
UNKNOWN_TO_JUDGE = {
    'z3': (r'divisible',),
}
OUT_OF_MEMORY = re.compile(r'out of memory|bad_alloc|memout|std::length_error', re.IGNORECASE)
ERROR = re.compile(
    r'\(error\b|\berror:|^boolector:|unsupported|\bno support\b|^\[btor', re.IGNORECASE
)


def first_line(text):
    lines = [line.strip() for line in text.splitlines() if line.strip()]
    return lines[0] if lines else ''


def judge(name, command, limits, expected):
    """Runs a solver and compares its answers with `expected`: a list of sat, unsat and unknown."""
    result = run(command, limits)
    lines = [line.strip() for line in result.output.splitlines()]
    answers = [line for line in lines if line in ('sat', 'unsat', 'unknown')]
    # A solver that does not know a command goes on without it, so its answers mean nothing.
    for complaint in complaints(result, command[-1]):
        if any(re.search(pattern, complaint) for pattern in UNKNOWN_TO_JUDGE.get(name, ())):
            return Verdict('undecided', f'{name} does not know what is written: {complaint}')
        return Verdict('refused', complaint)
    for number, (answer, right) in enumerate(zip(answers, expected), 1):
        if 'unknown' not in (answer, right) and answer != right:
            return Verdict('disagreed', f'answer {number} is {answer}, not {right}')
    if len(answers) > len(expected):
        return Verdict('disagreed', f'{len(answers)} answers, not {len(expected)}')
    if result.late:
        return Verdict('undecided', 'time')
    if OUT_OF_MEMORY.search(result.output + result.messages):
        return Verdict('undecided', 'memory')
    if result.signal:
        return Verdict('crashed', signal.Signals(result.signal).name)
    if len(answers) < len(expected):
        said = (first_line(result.messages) or first_line(result.output)).replace(command[-1], '')
        return Verdict('refused', f'{len(answers)} answers, not {len(expected)}: {said}')
    if 'unknown' in answers:
        return Verdict('undecided', 'unknown')
    if 'unknown' in expected:
        return Verdict('undecided', 'the right answer is not known')
    return Verdict('agreed')


def complaints(result, path):
    """Gives the lines that say that a solver does not take the text, without the file's path."""
    text = result.output + '\n' + result.messages
    lines = [line.strip().replace(path + ':', '') for line in text.splitlines()]
    # z3 says so, in two places, of a logic that it has no name for, and takes it all the same.
    logic_ignored = any('ignoring unsupported logic' in line for line in lines)
    found = []
    for line in lines:
        if OUT_OF_MEMORY.search(line) or 'interrupted by' in line or 'CAUGHT SIGNAL' in line:
            continue
        if logic_ignored and (line == 'unsupported' or 'ignoring unsupported logic' in line):
            continue
        if ERROR.search(line):
            found.append(line)
    return found


def solver_command(name, path, incremental=False):
    """Gives the command that makes a solver read the SMT-LIB file at `path`."""
    match name:
        case 'z3':
            return ['z3', '-smt2', path]
        case 'cvc5':
            return ['cvc5', '--lang', 'smt2'] + (['--incremental'] if incremental else []) + [path]
        case 'boolector':
            return ['boolector', '--smt1', path]
    raise ValueError(name)
