#include "brum/printers/smtlib_term_printer.h"
#include "brum/utils/concat.h"

// How rational numbers are spelt.

namespace brum {

std::string SmtLibTermPrinter::to_smtlib(QNumber value) const {
  const bool negative = value.sign() < 0;
  value = abs(value);
  const QNumber denominator = value.get_den();
  std::string text;
  if (negative) {
    text += v1_format ? "(~ " : "(- ";
  }
  if (denominator == 1) {
    text += value.get_num().to_str();
  } else {
    text += concat({"(/ ", value.get_num().to_str(), " ", denominator.to_str(), ")"});
  }
  if (negative) {
    text += ')';
  }
  return text;
}

}  // namespace brum
