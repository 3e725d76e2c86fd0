#include "bench/script_files.h"

#include <unistd.h>

#include <fstream>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

#include "bench/random.h"

namespace brum::bench {

namespace {

constexpr std::size_t num_variables = 1000;
constexpr std::size_t window = 1000;

/// Writes one script of a given length.
class ScriptWriter {
 public:
  ScriptWriter(std::ostream& out, std::size_t bytes) : out_(out), bytes_(bytes) {}

  void write(ScriptKind kind) {
    const bool is_bit_vectors = kind == ScriptKind::bit_vectors;
    out_ << "(set-logic " << (is_bit_vectors ? "QF_BV" : "QF_LIA") << ")\n";
    for (std::size_t i = 0; i < num_variables; ++i) {
      out_ << "(declare-fun x" << i << " () " << (is_bit_vectors ? "(_ BitVec 32)" : "Int")
           << ")\n";
    }
    switch (kind) {
      case ScriptKind::clauses:
        write_assertions([this] { write_clause(); });
        break;
      case ScriptKind::lets:
        write_lets();
        break;
      case ScriptKind::definitions:
        write_definitions();
        break;
      case ScriptKind::bit_vectors:
        write_assertions([this] { write_bit_vector_equation(); });
        break;
    }
  }

 private:
  bool is_long_enough() const { return static_cast<std::size_t>(out_.tellp()) >= bytes_; }

  std::string variable() { return "x" + std::to_string(random_.below(num_variables)); }

  template <class WriteFormula>
  void write_assertions(const WriteFormula& write_formula) {
    while (!is_long_enough()) {
      out_ << "(assert ";
      write_formula();
      out_ << ")\n";
    }
  }

  void write_clause() {
    out_ << "(or";
    for (std::size_t i = 0; i < 3; ++i) {
      const bool is_negative = random_.below(2) == 0;
      out_ << (is_negative ? " (not " : " ");
      if (random_.below(4) == 0) {
        out_ << "(= " << variable() << ' ' << variable() << ')';
      } else {
        out_ << "(<= (+ " << variable() << " (* " << 2 + random_.below(98) << ' ' << variable()
             << ")) " << random_.below(100000) << ')';
      }
      out_ << (is_negative ? ")" : "");
    }
    out_ << ')';
  }

  /// A variable or one of the last things that were given names.
  std::string argument(char prefix, std::size_t num_names) {
    const std::size_t back = random_.below(window);
    return back < num_names ? prefix + std::to_string(num_names - 1 - back) : variable();
  }

  void write_lets() {
    out_ << "(assert\n";
    std::size_t count = 0;
    for (; !is_long_enough(); ++count) {
      out_ << "(let ((t" << count << " (+ " << argument('t', count) << ' ' << argument('t', count)
           << ")))\n";
    }
    out_ << "(<= t" << count - 1 << " x0)" << std::string(count, ')') << ")\n";
  }

  void write_definitions() {
    for (std::size_t count = 0; !is_long_enough(); ++count) {
      out_ << "(define-fun t" << count << " () Int (+ " << variable() << " (* "
           << 2 + random_.below(98) << ' ' << variable() << ")))\n";
      out_ << "(assert (<= " << argument('t', count + 1) << ' ' << argument('t', count + 1)
           << "))\n";
    }
  }

  std::string bit_vector() {
    switch (random_.below(6)) {
      case 0: {
        const std::string digits = std::to_string(10000000 + random_.below(89999999));
        return "#x" + digits;
      }
      case 1:
        return "(concat ((_ extract 15 0) " + variable() + ") ((_ extract 31 16) " + variable() +
               "))";
      default:
        return variable();
    }
  }

  void write_bit_vector_equation() {
    static const std::vector<std::string> operators = {"bvadd", "bvmul", "bvxor", "bvand",
                                                       "bvor",  "bvshl", "bvlshr"};
    out_ << (random_.below(2) == 0 ? "(bvult " : "(= ");
    for (std::size_t i = 0; i < 2; ++i) {
      out_ << '(' << operators[random_.below(operators.size())] << ' ' << bit_vector() << " ("
           << operators[random_.below(operators.size())] << ' ' << bit_vector() << ' '
           << bit_vector() << (i == 0 ? ")) " : "))");
    }
    out_ << ')';
  }

  std::ostream& out_;
  std::size_t bytes_;
  Random random_;
};

}  // namespace

ScriptFile::ScriptFile(NamedKind kind, std::size_t bytes) {
  std::string name = std::filesystem::temp_directory_path() / "brumlin-bench-XXXXXX.smt2";
  const int file = mkstemps(name.data(), 5);
  if (file < 0) {
    throw std::system_error(errno, std::generic_category(), name);
  }
  close(file);
  path_ = name;
  try {
    std::ofstream out;
    out.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    out.open(path_, std::ios_base::binary);
    ScriptWriter(out, bytes).write(kind.kind);
    out.close();
    size_ = std::filesystem::file_size(path_);
  } catch (...) {
    unlink(path_.c_str());
    throw;
  }
}

ScriptFile::~ScriptFile() {
  unlink(path_.c_str());
}

}  // namespace brum::bench
