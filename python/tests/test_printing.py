"""Documents, texts and traces."""

import codecs
import gc
import io
import tempfile
import weakref

import pytest

import brum

HEADER = "(set-info :source |printed by Brumlin|)\n(declare-fun x () Int)\n"


@pytest.fixture
def m():
    return brum.TermManager()


@pytest.fixture
def formula(m):
    """(and (<= s 7) (not (= s 3))) with s = (+ x x), which is term 2."""
    x = m.const("x", m.int_sort)
    total = x + x
    return (total <= 7) & ~total.equals(3)


def test_version_1(formula):
    assert formula.to_smtlib(version=1, logic="QF_LIA", status="sat") == (
        "(benchmark unnamed\n"
        ":status sat\n"
        ":logic QF_LIA\n"
        ":source { printed by Brumlin }\n"
        ":extrafuns ((x Int))\n"
        "\n:formula\n"
        "(let (?def_2 (+ x x))\n"
        "\n(and (<= ?def_2 7) (not (= ?def_2 3)))\n"
        ")\n)\n"
    )


def test_version_2(formula):
    assert formula.to_smtlib(version=2) == (
        HEADER + "(assert\n"
        "(let ((.def_2 (+ x x)))\n"
        "(and (<= .def_2 7) (not (= .def_2 3)))\n"
        "))\n"
    )


def test_define_fun_with_labels_and_check_sat(formula):
    text = formula.to_smtlib(define_fun=True, label_prefix="d_", check_sat=True)
    assert text == (
        HEADER + "(define-fun d_2 () Int (+ x x))\n"
        "(assert (and (<= d_2 7) (not (= d_2 3))))\n"
        "(check-sat)\n"
    )


def test_terms(formula):
    text = brum.terms_to_smtlib(formula.arguments)
    assert text == (
        HEADER + "(define-fun .def_2 () Int (+ x x))\n"
        "(define-fun .def_4 () Bool (<= .def_2 7))\n"
        "(define-fun .def_7 () Bool (not (= .def_2 3)))\n"
        "(assert true)\n"
    )
    assert formula.arguments[1].label() == ".def_7"
    out = io.StringIO()
    brum.write_terms(formula.arguments, out)
    assert out.getvalue() == text
    with pytest.raises(ValueError):
        brum.terms_to_smtlib([])


def test_single_terms_and_atoms(formula):
    expected = "(let ((.def_2 (+ x x))) (and (<= .def_2 7) (not (= .def_2 3))))"
    assert str(formula) == expected
    assert formula.to_text() == expected
    assert formula.arguments[0].to_text(newlines=True) == "(<= (+ x x) 7)"
    assert (
        formula.to_text(version=1)
        == "(let (?def_2 (+ x x)) (and (<= ?def_2 7) (not (= ?def_2 3))))"
    )
    assert formula.arguments[0].atom_text() == "(<= (+ x x) 7)"


def test_attributes(formula):
    bounded = formula.arguments[0]
    attributes = {bounded: [("named", "below"), ("line", "12")]}
    assert bounded.to_text(attributes=attributes) == "(! (<= (+ x x) 7) :named below :line 12)"
    with pytest.raises(ValueError, match="attributes"):
        formula.to_smtlib(version=1, attributes=attributes)


def test_attributes_of_wrong_types(formula):
    for wrong in (
        [(formula, [])],
        7,
        {"p": [("named", "a")]},
        {None: []},
        {formula: [("a",)]},
        {formula: [("a", 1)]},
        {formula: ["ab"]},
        {formula: "ab"},
        {formula: None},
    ):
        with pytest.raises(TypeError, match="attributes"):
            formula.to_smtlib(attributes=wrong)


def test_a_term_without_attributes_is_printed_as_any_other(formula):
    assert formula.to_smtlib(attributes={formula: []}) == formula.to_smtlib()
    assert formula.to_smtlib(version=1, attributes={formula: []}) == formula.to_smtlib(version=1)


def test_options_that_do_not_go_together(formula):
    for wrong in (
        {"version": 3},
        {"version": 1, "define_fun": True},
        {"version": 1, "check_sat": True},
        {"version": 1, "label_prefix": "d_"},
        {"label_prefix": "a b"},
    ):
        with pytest.raises(ValueError):
            formula.to_smtlib(**wrong)
    with pytest.raises(brum.SortError, match="no formula"):
        formula.arguments[0].arguments[0].to_smtlib()


def test_what_a_form_cannot_express(m):
    row = m.array_sort(m.int_sort, m.int_sort)
    table = m.const("t", m.array_sort(m.int_sort, row))
    with pytest.raises(brum.FormError):
        table.equals(table).to_smtlib(version=1)


def test_unsafe_names_are_refused(m):
    formula = m.const("a|b", m.bool_sort)
    with pytest.raises(brum.FormError, match="the name `a|b`"):
        formula.to_smtlib()
    assert "|a|b|" in formula.to_smtlib(check_names=False)


def test_files_of_text_and_of_bytes(formula, tmp_path):
    expected = formula.to_smtlib()
    out = io.StringIO()
    formula.write_smtlib(out)
    assert out.getvalue() == expected
    with open(tmp_path / "text", "w", encoding="utf-8") as text:
        formula.write_smtlib(text)
    with open(tmp_path / "bytes", "wb") as data:
        formula.write_smtlib(data)
    with open(tmp_path / "raw", "wb", buffering=0) as raw:
        formula.write_smtlib(raw)
    for name in ("text", "bytes", "raw"):
        assert (tmp_path / name).read_text(encoding="utf-8") == expected


class Reluctant(io.RawIOBase):
    """A binary file that takes no more than so many bytes at a time."""

    def __init__(self, at_a_time):
        super().__init__()
        self.at_a_time = at_a_time
        self.taken = b""

    def write(self, piece):
        self.taken += bytes(piece)[: self.at_a_time]
        return min(len(piece), self.at_a_time)


def test_a_file_may_take_a_part_only(m):
    formula = m.const("x", m.int_sort) <= 7
    file = Reluctant(3)
    formula.write_smtlib(file)
    assert file.taken.decode() == formula.to_smtlib()
    with pytest.raises(OSError, match="took nothing"):
        formula.write_smtlib(Reluctant(0))


class Blocked(io.RawIOBase):
    """A binary file that would have to wait after so many pieces."""

    def __init__(self, pieces):
        super().__init__()
        self.pieces = pieces

    def write(self, piece):
        if self.pieces == 0:
            return None
        self.pieces -= 1
        return min(len(piece), 3)


def test_a_file_that_would_block(m):
    formula = m.const("x", m.int_sort) <= 7
    for pieces in (0, 1):
        with pytest.raises(BlockingIOError, match="took nothing"):
            formula.write_smtlib(Blocked(pieces))


def test_files_that_wrap_others(formula, tmp_path):
    expected = formula.to_smtlib()
    with tempfile.NamedTemporaryFile(dir=tmp_path) as file:
        formula.write_smtlib(file)
        file.seek(0)
        assert file.read() == expected.encode()
    for size in (0, 1):  # kept in memory, moved to a file
        with tempfile.SpooledTemporaryFile(size, dir=tmp_path) as file:
            formula.write_smtlib(file)
            file.seek(0)
            assert file.read() == expected.encode()
    with tempfile.SpooledTemporaryFile(mode="w+", encoding="utf-8", dir=tmp_path) as file:
        formula.write_smtlib(file)
        file.seek(0)
        assert file.read() == expected
    # These take str, and show the mode of the binary file below them.
    with codecs.open(str(tmp_path / "codecs"), "w", "utf-8") as file:
        formula.write_smtlib(file)
    assert (tmp_path / "codecs").read_bytes() == expected.encode()
    with open(tmp_path / "writer", "wb") as below:
        formula.write_smtlib(codecs.getwriter("utf-8")(below))
    assert (tmp_path / "writer").read_bytes() == expected.encode()


class Pieces:
    """A file of somebody's own that keeps the pieces."""

    def __init__(self):
        self.pieces = []

    def write(self, piece):
        self.pieces.append(piece)


def test_a_document_is_streamed(m):
    x = m.const("x", m.int_sort)
    term = x
    for number in range(50_000):
        term = term + number
    out = Pieces()
    (term <= 0).write_smtlib(out)
    assert len(out.pieces) > 5
    assert max(len(piece) for piece in out.pieces) < 200_000
    assert "".join(out.pieces) == (term <= 0).to_smtlib()


def test_characters_are_not_cut_by_the_pieces(m):
    name = "\N{GREEK SMALL LETTER ALPHA}" * 100_001
    formula = m.const(name, m.bool_sort)
    for shift in range(2):
        out = Pieces()
        formula.write_smtlib(out, logic="A" * (shift + 1))
        text = "".join(out.pieces)
        assert text.count(f"|{name}|") == 2
        assert "\ufffd" not in text


def test_bytes_that_are_no_text(m, tmp_path):
    formula = m.const(b"\xff", m.bool_sort)
    text = formula.to_smtlib()
    assert "|\udcff|" in text
    with open(tmp_path / "out", "wb") as out:
        formula.write_smtlib(out)
    assert (tmp_path / "out").read_bytes() == text.encode("utf-8", "surrogateescape")


def test_names_that_are_no_text(m):
    node = m.uninterpreted_sort(b"\xff")
    n = m.const(b"\xfe", node)
    assert n.symbol.name == "\udcfe"
    assert "\udcfe" in repr(n)
    assert repr(n.symbol) == "<brum.Symbol \udcfe>"
    assert str(node) == "\udcff"
    assert m.const("\udcfe", node) == n
    assert m.uninterpreted_sort("\udcff") == node
    assert m.declare("\udcfe", node) == n.symbol
    assert m.function("\udcfd", [node], node)(n).symbol.name == "\udcfd"
    with pytest.raises(brum.SortError, match="\udcfe"):
        m.const(b"\xfe", m.int_sort)
    with pytest.raises(brum.FormError, match="\udcfe"):
        m.const(b"\xfe|", m.bool_sort).to_smtlib()
    with pytest.raises(TypeError, match="\udcfd takes 1 arguments"):
        m.function(b"\xfd", [node], node)()
    for wrong in ("\ud800", 7, None):  # a surrogate that stands for no byte
        with pytest.raises(TypeError):
            m.const(wrong, m.int_sort)
    with pytest.raises(TypeError):
        m.number("\ud800")


def test_attributes_and_names_of_assertions_that_are_no_text(m):
    p = m.const("p", m.bool_sort)
    assert p.to_text(attributes={p: [("k", "\udcff")]}) == "(! p :k \udcff)"
    out = io.BytesIO()
    trace = brum.Trace(m, out)
    trace.annotate(p, "k", "\udcfe")
    trace.assert_(p, "\udcff")
    assert out.getvalue().endswith(b"(assert (! (! p :k \xfe) :named |\xff|))\n")
    with pytest.raises(brum.FormError, match="\udcff"):
        trace.assert_(p, "\udcff|")


class Full:
    def write(self, piece):
        raise OSError("no space")


def test_errors_of_the_file_come_through(formula):
    with pytest.raises(OSError, match="no space"):
        formula.write_smtlib(Full())
    with pytest.raises(AttributeError):
        formula.write_smtlib(42)
    assert formula.to_smtlib().startswith(HEADER)


def test_a_trace(m):
    node = m.uninterpreted_sort("Node")
    n = m.const("n", node)
    x = m.const("x", m.int_sort)
    total = x + x  # 3, shared by the two assertions
    upper, lower = total <= 7, 0 <= total
    out = io.StringIO()
    trace = brum.Trace(m, out, logic="QF_UFLIA")
    trace.declare(node)
    trace.declare(n.symbol)
    trace.declare(x)
    trace.push()
    trace.assert_(upper, "upper bound")
    trace.check_sat()
    trace.pop()
    trace.annotate(lower, "line", "4")
    trace.assert_(~lower)
    trace.check_sat()
    assert out.getvalue() == (
        "(set-option :global-declarations true)\n"
        "(set-logic QF_UFLIA)\n"
        "(set-info :source |printed by Brumlin|)\n"
        "(declare-sort U0 0)\n"
        "(declare-fun n () U0)\n"
        "(declare-fun x () Int)\n"
        "(push 1)\n"
        "(define-fun .def_3 () Int (+ x x))\n"
        "(assert (! (<= .def_3 7) :named |upper bound|))\n"
        "(check-sat)\n"
        "(pop 1)\n"
        "(assert (not (! (<= 0 .def_3) :line 4)))\n"
        "(check-sat)\n"
    )


def test_assertions_are_not_named_by_reserved_words(m):
    p = m.const("p", m.bool_sort)
    out = io.StringIO()
    trace = brum.Trace(m, out)
    for name in ("let", "assert", "lets"):
        trace.assert_(p, name)
    assert out.getvalue().endswith(
        "(assert (! p :named |let|))\n"
        "(assert (! p :named |assert|))\n"
        "(assert (! p :named lets))\n"
    )


class Failing:
    """A file of text that fails while `full`."""

    def __init__(self):
        self.full = False
        self.text = ""

    def write(self, piece):
        if self.full:
            raise OSError("no space")
        self.text += piece


@pytest.mark.parametrize("define_fun", [True, False])
def test_a_trace_ends_with_a_failed_write(m, define_fun):
    x = m.const("x", m.int_sort)
    total = x + x
    formula = (total <= 7) & (0 <= total)
    file = Failing()
    trace = brum.Trace(m, file, define_fun=define_fun)
    trace.declare(x)
    before = file.text
    file.full = True
    with pytest.raises(OSError, match="no space"):
        trace.assert_(formula)
    file.full = False
    for call in (
        lambda: trace.assert_(formula),
        lambda: trace.declare(x),
        lambda: trace.declare(m.uninterpreted_sort("S")),
        lambda: trace.annotate(formula, "k", "1"),
        trace.push,
        trace.pop,
        trace.check_sat,
    ):
        with pytest.raises(brum.Error, match="the trace ended with a failed write"):
            call()
    assert file.text == before


def test_what_a_trace_refuses_does_not_end_it(m):
    x = m.const("x", m.int_sort)
    out = io.StringIO()
    trace = brum.Trace(m, out)
    for error, call in (
        (TypeError, lambda: trace.declare("x")),
        (TypeError, lambda: trace.declare(None)),
        (TypeError, lambda: trace.assert_(True)),
        (TypeError, lambda: trace.annotate(x, "k", 1)),
        (TypeError, lambda: trace.push(-1)),
        (brum.SortError, lambda: trace.assert_(x)),
        (brum.SortError, lambda: trace.declare(m.int_sort)),
        (brum.FormError, lambda: trace.assert_(x <= 7, "")),
    ):
        with pytest.raises(error):
            call()
    trace.check_sat()
    assert out.getvalue().endswith("(check-sat)\n")


def test_a_file_cannot_write_to_its_own_trace(m):
    class Loop(Failing):
        trace = None

        def write(self, piece):
            if self.trace is not None:
                self.trace.check_sat()
            super().write(piece)

    file = Loop()
    file.trace = brum.Trace(m, file)
    with pytest.raises(brum.Error, match="is being written"):
        file.trace.push()
    with pytest.raises(brum.Error, match="ended"):
        file.trace.push()
    assert "push" not in file.text and "check-sat" not in file.text


@pytest.mark.parametrize("kind", [brum.Trace, type("Own", (brum.Trace,), {})])
def test_a_trace_in_a_cycle_is_freed(m, kind):
    class File(io.StringIO):
        pass

    file = File()
    file.trace = kind(m, file)
    gone = weakref.ref(file)
    file.trace.push()
    gc.collect()
    assert gone() is file  # as long as somebody has it
    file.trace.push()
    assert file.getvalue().endswith("(push 1)\n(push 1)\n")
    del file
    gc.collect()
    assert gone() is None


def test_the_collector_may_run_at_any_time(m):
    class File:
        def write(self, piece):
            gc.collect()

        def __del__(self):
            gc.collect()

    before = gc.get_threshold()
    gc.set_threshold(1)
    try:
        traces = [brum.Trace(m, File()) for _ in range(10)]
        for trace in traces:
            trace.push()
        del trace, traces
        brum.Trace.__new__(brum.Trace)
        gc.collect()
    finally:
        gc.set_threshold(*before)
    assert not any(isinstance(thing, File) for thing in gc.get_objects())


def test_messages_do_not_write_out_shared_sorts(m):
    sort = m.int_sort
    for _ in range(20):
        sort = m.array_sort(sort, sort)
    term = m.const("z", sort)
    tables = m.const("tables", m.array_sort(sort, m.int_sort))
    trace = brum.Trace(m, io.StringIO())
    for call in (
        term.to_smtlib,
        lambda: trace.assert_(term),
        lambda: trace.declare(sort),
        lambda: tables[1],
        lambda: term - term,
    ):
        with pytest.raises(brum.SortError) as caught:
            call()
        assert len(str(caught.value)) < 100_000


def test_what_a_trace_refuses(m):
    out = io.StringIO()
    trace = brum.Trace(m, out, global_declarations=False)
    before = out.getvalue()
    x = m.const("x", m.int_sort)
    with pytest.raises(brum.SortError, match="only uninterpreted sorts"):
        trace.declare(m.int_sort)
    with pytest.raises(brum.SortError, match="operator"):
        trace.declare((x + 1).symbol)
    with pytest.raises(brum.SortError, match="no formula"):
        trace.assert_(x)
    for name in ("", "a|b", "a\\b"):
        with pytest.raises(brum.FormError):
            trace.assert_(m.true_(), name)
    with pytest.raises(brum.SortError, match="different managers"):
        trace.assert_(brum.TermManager().true_())
    assert out.getvalue() == before == "(set-info :source |printed by Brumlin|)\n"


def test_a_trace_needs_a_manager(m):
    with pytest.raises(TypeError):
        brum.Trace(None, io.StringIO())
    with pytest.raises(TypeError):
        brum.Term()
    with pytest.raises(TypeError):
        m.declare("x", None)
