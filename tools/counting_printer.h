#ifndef BRUM_TOOLS_COUNTING_PRINTER_H
#define BRUM_TOOLS_COUNTING_PRINTER_H

#include <cstddef>
#include <string>

namespace brum::tools {

/// A printer that counts the definitions it writes.
template <class Printer>
class CountingPrinter : public Printer {
 public:
  using Printer::Printer;

  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override {
    ++definitions_;
    Printer::print_define_start(out, label, term);
  }

  std::size_t definitions() const { return definitions_; }

 private:
  std::size_t definitions_ = 0;
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_COUNTING_PRINTER_H
