#ifndef BRUM_UTILS_EXPORT_H
#define BRUM_UTILS_EXPORT_H

/// BRUM_EXPORT marks what a shared library of brum offers: everything else is compiled with hidden
/// visibility and cannot be linked to from outside.
///
/// A class is marked as a whole when any member of it is defined in a source file, or when it has
/// virtual functions or is thrown: its type information must then be the same object on both sides.
/// Templates and functions defined in headers need no mark, as each side has its own. A class whose
/// fields are of a marked class's kind is marked with it. Means nothing in a static library.
#if defined(__GNUC__) && !defined(_WIN32)
#define BRUM_EXPORT __attribute__((visibility("default")))
#else
#define BRUM_EXPORT
#endif

#endif  // BRUM_UTILS_EXPORT_H
