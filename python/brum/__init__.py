"""Builds SMT formulas and writes them as SMT-LIB text.

    m = brum.TermManager()
    x, y = m.const("x", m.int_sort), m.const("y", m.int_sort)
    formula = (x + y <= 7) & ~x.equals(y)
    print(formula.to_smtlib(version=2))
"""

from brum._brum import (
    Error,
    FormError,
    Sort,
    SortError,
    Symbol,
    Term,
    TermManager,
    Trace,
    __version__,
    terms_to_smtlib,
    write_terms,
)

__all__ = [
    "Error",
    "FormError",
    "Sort",
    "SortError",
    "Symbol",
    "Term",
    "TermManager",
    "Trace",
    "__version__",
    "terms_to_smtlib",
    "write_terms",
]
