#ifndef BRUM_BRUM_H
#define BRUM_BRUM_H

/// Everything that the library offers.

#include "brum/numbers/qnumber.h"
#include "brum/printers/check_names.h"
#include "brum/printers/dot_term_printer.h"
#include "brum/printers/label_prefix.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"
#include "brum/printers/term_printer.h"
#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/terms/term.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/exception.h"
#include "brum/utils/hash_containers.h"
#include "brum/utils/memory_pool.h"
#include "brum/utils/memory_stream.h"

#endif  // BRUM_BRUM_H
