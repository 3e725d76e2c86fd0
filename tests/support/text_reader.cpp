#include "tests/support/text_reader.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace brum::testing {

namespace {

[[noreturn]] void refuse(const std::string& what) {
  throw std::runtime_error("text reader: " + what);
}

/// Cuts a text into brackets and words; what stands between bars or curly brackets is one word.
class Words {
 public:
  explicit Words(std::string_view text) : text_(text) { advance(); }

  bool at_end() const { return word_.empty(); }
  std::string_view peek() const { return word_; }
  std::string_view next() {
    const std::string_view word = word_;
    if (word.empty()) {
      refuse("the text ends too early");
    }
    advance();
    return word;
  }
  void expect(std::string_view word) {
    if (const std::string_view found = next(); found != word) {
      refuse("found " + std::string(found) + ", expected " + std::string(word));
    }
  }

 private:
  void advance() {
    while (!text_.empty() && (text_.front() == ' ' || text_.front() == '\n')) {
      text_.remove_prefix(1);
    }
    std::size_t length = 0;
    if (text_.empty()) {
      length = 0;
    } else if (text_.front() == '(' || text_.front() == ')') {
      length = 1;
    } else if (text_.front() == '|' || text_.front() == '{') {
      length = text_.find(text_.front() == '|' ? '|' : '}', 1) + 1;
    } else {
      length = std::min(text_.find_first_of(" \n()"), text_.size());
    }
    word_ = text_.substr(0, length);
    text_.remove_prefix(length);
  }

  std::string_view text_;
  std::string_view word_;
};

class Reader {
 public:
  Reader(TermManager& mgr, std::string_view text) : mgr_(mgr), words_(text) {}

  Words& words() { return words_; }
  void define(std::string_view name, const Term* term) { definitions_[std::string(name)] = term; }

  const Term* expression() {
    std::vector<Open> open;
    for (;;) {
      const Term* done = nullptr;
      const std::string_view word = words_.next();
      if (word != "(") {
        done = word == ")" ? nullptr : constant(word);
        if (done == nullptr) {
          refuse("a bracket closes nothing");
        }
      } else if (const std::string_view head = words_.next(); head == "let" || head == "flet") {
        words_.expect("(");
        const bool version_2 = words_.peek() == "(";
        if (version_2) {
          words_.expect("(");
        }
        open.push_back({Open::binding, std::string(words_.next()), {}, version_2, nullptr});
        continue;
      } else {
        open.push_back({Open::application, std::string(head), {}, false, nullptr});
        continue;
      }
      // Hand the finished expression to what is around it.
      for (;;) {
        if (open.empty()) {
          return done;
        }
        Open& top = open.back();
        if (top.kind == Open::binding) {
          words_.expect(")");
          if (top.version_2) {
            words_.expect(")");
          }
          const auto found = definitions_.find(top.name);
          top.hidden = found == definitions_.end() ? nullptr : found->second;
          definitions_[top.name] = done;
          top.kind = Open::body;
          break;
        }
        if (top.kind == Open::application) {
          top.arguments.push_back(done);
          if (words_.peek() != ")") {
            break;
          }
          words_.expect(")");
          done = apply(top.name, top.arguments);
        } else {
          words_.expect(")");
          if (top.hidden == nullptr) {
            definitions_.erase(top.name);
          } else {
            definitions_[top.name] = top.hidden;
          }
        }
        open.pop_back();
      }
    }
  }

 private:
  struct Open {
    enum Kind { application, binding, body } kind;
    std::string name;
    std::vector<const Term*> arguments;
    bool version_2;
    const Term* hidden;  // what a binding hides
  };

  const Term* constant(std::string_view word) {
    const std::string name(word);
    if (const auto found = definitions_.find(name); found != definitions_.end()) {
      return found->second;
    }
    const Symbol* symbol = mgr_.get_signature()->get_symbol(name.c_str());
    if (symbol == nullptr) {
      refuse("no symbol " + name);
    }
    return mgr_.make_term(symbol);
  }

  const Term* apply(const std::string& name, const std::vector<const Term*>& arguments) {
    if (name == "not" && arguments.size() == 1) {
      return mgr_.make_not(arguments[0]);
    }
    if (arguments.size() == 2) {
      using Builder = const Term* (TermManager::*)(const Term*, const Term*);
      static const std::map<std::string, Builder> builders = {
          {"and", &TermManager::make_and}, {"or", &TermManager::make_or},
          {"iff", &TermManager::make_iff}, {"=", &TermManager::make_iff},
          {"+", &TermManager::make_plus},  {"*", &TermManager::make_times},
          {"<=", &TermManager::make_leq},
      };
      if (const auto found = builders.find(name); found != builders.end()) {
        return (mgr_.*found->second)(arguments[0], arguments[1]);
      }
    }
    const Symbol* symbol = mgr_.get_signature()->get_symbol(name.c_str());
    if (symbol == nullptr) {
      refuse("no function " + name);
    }
    return mgr_.make_term(symbol, arguments);
  }

  TermManager& mgr_;
  Words words_;
  std::map<std::string, const Term*> definitions_;
};

/// Reads over the rest of a command whose opening bracket and name were read.
void skip_command(Words& words) {
  for (std::size_t depth = 1; depth > 0;) {
    const std::string_view word = words.next();
    depth = word == "(" ? depth + 1 : depth - (word == ")" ? 1U : 0U);
  }
}

}  // namespace

const Term* read_expression(TermManager& mgr, std::string_view text) {
  Reader reader(mgr, text);
  const Term* term = reader.expression();
  if (!reader.words().at_end()) {
    refuse("more text follows the expression");
  }
  return term;
}

const Term* read_document(TermManager& mgr, std::string_view text) {
  Reader reader(mgr, text);
  Words& words = reader.words();
  const Term* formula = nullptr;
  while (!words.at_end()) {
    words.expect("(");
    const std::string command(words.next());
    if (command == "benchmark") {
      while (words.next() != ":formula") {
      }
      formula = reader.expression();
      words.expect(")");
    } else if (command == "assert") {
      formula = reader.expression();
      words.expect(")");
    } else if (command == "define-fun") {
      const std::string name(words.next());
      words.expect("(");
      words.expect(")");
      words.next();  // the sort, here always a single word
      reader.define(name, reader.expression());
      words.expect(")");
    } else {
      skip_command(words);
    }
  }
  if (formula == nullptr) {
    refuse("the document has no formula");
  }
  return formula;
}

}  // namespace brum::testing
