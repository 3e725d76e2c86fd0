"""Building terms with operators."""

import copy
import gc
import io
import pickle
from fractions import Fraction

import pytest

import brum


@pytest.fixture
def m():
    return brum.TermManager()


@pytest.fixture
def x(m):
    return m.const("x", m.int_sort)


@pytest.fixture
def y(m):
    return m.const("y", m.int_sort)


@pytest.fixture
def r(m):
    return m.const("r", m.real_sort)


@pytest.fixture
def p(m):
    return m.const("p", m.bool_sort)


@pytest.fixture
def q(m):
    return m.const("q", m.bool_sort)


@pytest.fixture
def a(m):
    return m.const("a", m.bv_sort(8))


@pytest.fixture
def b(m):
    return m.const("b", m.bv_sort(8))


def test_arithmetic(x, y, r):
    assert str(x + y) == "(+ x y)"
    assert str(x + 1) == "(+ x 1)"
    assert str(1 + x) == "(+ 1 x)"
    assert str(2 * x) == "(* 2 x)"
    assert str(x - y) == "(+ x (* (- 1) y))"
    assert str(3 - x) == "(+ 3 (* (- 1) x))"
    assert str(-x) == "(* (- 1) x)"
    assert str(r.floor()) == "(to_int r)"
    assert str(x.congruent(y, 5)) == "((_ divisible 5) (- x y))"


def test_comparisons(x, y):
    assert str(x <= y) == "(<= x y)"
    assert str(x >= y) == "(<= y x)"
    assert str(x < y) == "(not (<= y x))"
    assert str(x > y) == "(not (<= x y))"
    assert str(x <= 7) == "(<= x 7)"
    assert str(7 >= x) == "(<= x 7)"
    assert str(7 < x) == "(not (<= x 7))"
    assert str(x + y <= 7) == "(<= (+ x y) 7)"


def test_numbers_take_the_sort_of_the_other_operand(m, x, r):
    assert (r + 1).arguments[1].sort == m.real_sort
    assert (x + 1).arguments[1].sort == m.int_sort
    half = x + Fraction(1, 2)
    assert half.sort == m.real_sort
    assert half.arguments[1].value == Fraction(1, 2)


def test_numbers_of_any_size(m):
    digits = 10**5000 + 7
    assert m.number(digits).value == digits
    assert m.number(-digits).value == -digits
    assert m.number("1.25").value == Fraction(5, 4)
    assert m.number("-12").value == -12
    assert m.number(3, m.real_sort).sort == m.real_sort
    assert m.const("x", m.int_sort).value is None


def test_connectives(p, q):
    assert str(p & q) == "(and p q)"
    assert str(p | q) == "(or p q)"
    assert str(~p) == "(not p)"
    assert str(p.implies(q)) == "(or (not p) q)"
    assert str(p.iff(q)) == "(= p q)"
    assert str(p.equals(q)) == "(= p q)"


def test_ite(p, x, y):
    assert str(p.ite(x, y)) == "(ite p x y)"
    assert str(p.ite(x, 0)) == "(ite p x 0)"


def test_bit_vectors(m, a, b):
    assert str(a & b) == "(bvand a b)"
    assert str(a | b) == "(bvor a b)"
    assert str(a ^ b) == "(bvxor a b)"
    assert str(~a) == "(bvnot a)"
    assert str(-a) == "(bvneg a)"
    assert str(a + b) == "(bvadd a b)"
    assert str(a - b) == "(bvsub a b)"
    assert str(a * b) == "(bvmul a b)"
    assert str(a << b) == "(bvshl a b)"
    assert str(a & 15) == "(bvand a (_ bv15 8))"
    assert str(15 - a) == "(bvsub (_ bv15 8) a)"
    assert str(a[6:2]) == "((_ extract 6 2) a)"
    assert str(a[3]) == "((_ extract 3 3) a)"
    for name in "udiv sdiv urem srem lshr ashr ult ule slt sle comp".split():
        assert str(getattr(a, name)(b)) == f"(bv{name} a b)"
    assert str(a.concat(b)) == "(concat a b)"
    assert a.concat(b).sort.width == 16
    for name in "rotate_left rotate_right zero_extend sign_extend".split():
        assert str(getattr(a, name)(3)) == f"((_ {name} 3) a)"
    assert m.bv(200, 8).value == 200


def test_bit_vectors_have_no_ambiguous_operators(a, b):
    for compare in (lambda: a <= b, lambda: a < b, lambda: a >= 1, lambda: a > 1):
        with pytest.raises(TypeError, match="ule"):
            compare()
    with pytest.raises(TypeError, match="lshr or ashr"):
        a >> b


def test_arrays(m, x, y):
    memory = m.const("memory", m.array_sort(m.int_sort, m.int_sort))
    assert str(memory[x]) == "(select memory x)"
    assert str(memory[3]) == "(select memory 3)"
    assert str(memory.store(x, y)) == "(store memory x y)"
    assert str(memory.store(0, 1)[x]) == "(select (store memory 0 1) x)"
    with pytest.raises(TypeError):
        iter(memory)
    with pytest.raises(TypeError):
        x[0]
    with pytest.raises(brum.SortError):
        x.store(0, 1)


def test_functions_are_called(m, x):
    node = m.uninterpreted_sort("Node")
    f = m.function("f", [node, m.int_sort], m.bool_sort)
    n = m.const("n", node)
    assert str(f(n, x)) == "(f n x)"
    assert str(f(n, 4)) == "(f n 4)"
    assert f.arity == 2
    assert f.name == "f"
    assert f(n, x).symbol == f
    with pytest.raises(TypeError, match="takes 2 arguments, not 1"):
        f(n)
    with pytest.raises(brum.SortError):
        f(x, n)


def test_sorts(m):
    byte = m.bv_sort(8)
    sort = m.array_sort(byte, m.real_sort)
    assert str(sort) == "(Array (_ BitVec 8) Real)"
    assert sort.kind == "array"
    assert sort.components == [byte, m.real_sort]
    assert (byte.kind, byte.width) == ("bit-vector", 8)
    assert m.bv_sort(8) == byte and hash(m.bv_sort(8)) == hash(byte)
    assert m.bv_sort(9) != byte
    assert str(m.function_sort([byte], m.bool_sort)) == "(-> (_ BitVec 8) Bool)"


def test_terms_are_values(x, y):
    assert x + y == x + y
    assert x + y != y + x
    assert len({x + y, x + y, y + x}) == 2
    assert {x: 1}[x] == 1
    assert x != 1
    assert (x + y).arguments == [x, y]
    assert "+" in repr(x + y)


def test_terms_have_no_truth_value(p, q, x):
    with pytest.raises(TypeError, match="neither true nor false"):
        if p:
            pass
    with pytest.raises(TypeError, match="chains"):
        0 <= x <= 5
    with pytest.raises(TypeError):
        p & (x == 1)  # == gives a bool, which is no term
    with pytest.raises(TypeError):
        p & True


def test_what_is_no_number_is_refused(m, x):
    for wrong in (1.5, None, "1", b"1", [1]):
        with pytest.raises(TypeError):
            x + wrong
    with pytest.raises(TypeError):
        m.number(1.5)
    with pytest.raises(brum.Error):
        m.number("one")
    with pytest.raises(brum.SortError):
        m.number("1/2", m.int_sort)
    with pytest.raises(brum.SortError):
        m.bv(256, 8)
    with pytest.raises(brum.SortError):
        m.bv(-1, 8)


def test_errors_have_the_message_of_the_library(m, p, x):
    with pytest.raises(brum.SortError, match="Bool"):
        ~x
    with pytest.raises(brum.SortError):
        p + 1
    assert issubclass(brum.SortError, brum.Error)
    assert issubclass(brum.FormError, brum.Error)
    terms = m.num_terms
    with pytest.raises(brum.SortError):
        m.const("x", m.bool_sort)
    assert m.num_terms == terms


def test_calls_that_fail_leave_no_terms(m, p, x, a):
    terms = m.num_terms
    for error, call in (
        (brum.SortError, lambda: p - x),
        (brum.SortError, lambda: x - p),
        (brum.SortError, lambda: x - a),
        (brum.SortError, lambda: -p),
        (brum.SortError, lambda: p.implies(x)),
        (brum.SortError, lambda: x.implies(p)),
        (TypeError, lambda: a <= 3),
        (TypeError, lambda: 3 < a),
    ):
        with pytest.raises(error):
            call()
        assert m.num_terms == terms


def test_bits_are_numbered_by_integers(a, x):
    for wrong in ("a", 1.5, x, None, True, slice("1", "0"), slice(1, False), slice(x, 0)):
        with pytest.raises(TypeError, match="the bits of a vector"):
            a[wrong]
    for wrong in (-1, 2**70, slice(-1, 0), slice(2**70, 0)):
        with pytest.raises(IndexError, match="the bits of a vector"):
            a[wrong]

    class Three:
        def __index__(self):
            return 3

    assert a[Three()] == a[3]


def test_objects_without_a_value(m, x):
    class Own(brum.Term):
        pass

    for made in (brum.Term, brum.Sort, brum.Symbol, Own):
        with pytest.raises(TypeError, match="has no constructor"):
            made.__new__(made)
        with pytest.raises(TypeError):
            made()
        with pytest.raises(TypeError):
            object.__new__(made)
    with pytest.raises(TypeError):
        brum.Trace.__new__(brum.Trace).check_sat()
    with pytest.raises(TypeError):
        brum.TermManager.__new__(brum.TermManager).true_()
    with pytest.raises(TypeError):
        brum.Trace(brum.TermManager.__new__(brum.TermManager), io.StringIO())


def test_nothing_is_pickled_or_copied(m, x):
    for thing in (x, x.sort, x.symbol, m, brum.Trace(m, io.StringIO())):
        for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
            with pytest.raises(TypeError, match="cannot pickle or copy"):
                pickle.dumps(thing, protocol)
        for make in (copy.copy, copy.deepcopy):
            with pytest.raises(TypeError, match="cannot pickle or copy"):
                make(thing)


def test_managers_do_not_mix(m, x):
    other = brum.TermManager()
    stranger = other.const("x", other.int_sort)
    with pytest.raises(brum.SortError, match="different managers"):
        x + stranger
    with pytest.raises(brum.SortError, match="different managers"):
        m.const("z", other.int_sort)
    with pytest.raises(brum.SortError, match="different managers"):
        m.function("f", [m.int_sort], m.int_sort)(stranger)
    with pytest.raises(brum.SortError, match="different managers"):
        brum.terms_to_smtlib([x, stranger])
    assert x != stranger


def test_terms_keep_their_manager_alive():
    def make():
        manager = brum.TermManager()
        return manager.const("x", manager.int_sort) + 1

    term = make()
    gc.collect()
    for _ in range(100):  # managers that may take the place of one that died
        noise = brum.TermManager()
        noise.const("noise", noise.bool_sort)
    assert str(term) == "(+ x 1)"
    sort = term.sort
    symbol = term.arguments[0].symbol
    del term
    gc.collect()
    assert str(sort) == "Int"
    assert symbol.name == "x"
    assert symbol.sort == sort


def test_deep_terms_need_no_stack(m, x):
    term = x
    for _ in range(200_000):
        term = term + 1
    formula = term <= 0
    text = formula.to_smtlib()
    assert text.count("(+ ") == 200_000
    del term, formula
