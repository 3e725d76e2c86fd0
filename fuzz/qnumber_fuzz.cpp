// The bytes are a history of operations on a few rationals, each compared with GMP's own.

#include <gmpxx.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

#include "brum/numbers/qnumber.h"
#include "brum/utils/exception.h"
#include "fuzz/fuzz_input.h"

namespace brum::fuzz {

namespace {

constexpr std::size_t most_steps = 400;
constexpr std::size_t most_digits = 3000;

/// A rational and what it must be.
struct Pair {
  QNumber number;
  mpq_class wanted;
};

mpz_class to_mpz(std::int64_t value) {
  mpz_class result;
  mpz_set_si(result.get_mpz_t(), value);
  return result;
}

mpq_class fraction(const mpz_class& num, const mpz_class& den) {
  mpq_class result(num, den);
  result.canonicalize();
  return result;
}

/// A machine integer, often one at the edges of some width.
std::int64_t any_int64(FuzzInput& input) {
  const std::uint8_t kind = input.byte();
  if (kind < 80)
    return static_cast<std::int64_t>(input.byte()) - 128;
  if (kind < 160) {
    const std::uint64_t power = std::uint64_t{1} << input.below(64);
    const auto near = power + input.below(5) - 2;
    return static_cast<std::int64_t>(kind % 2 == 0 ? near : 0 - near);
  }
  return static_cast<std::int64_t>(input.below(std::numeric_limits<std::uint64_t>::max()));
}

mpz_class any_mpz(FuzzInput& input) {
  mpz_class value = to_mpz(any_int64(input));
  if (input.byte() % 4 == 0)
    value = (value << static_cast<unsigned>(input.below(200))) + to_mpz(any_int64(input));
  return value;
}

class Numbers {
 public:
  void step(FuzzInput& input) {
    Pair& target = any(input);
    const Pair& a = any(input);
    const Pair& b = any(input);
    switch (input.byte() % 16) {
      case 0: {
        const std::int64_t value = any_int64(input);
        set(target, QNumber(value), mpq_class(to_mpz(value)));
        break;
      }
      case 1:
        make_of_machine_integers(target, input);
        break;
      case 2:
        make_of_gmp_integers(target, input);
        break;
      case 3:
        read(target, input);
        break;
      case 4:
        set(target, a.number + b.number, a.wanted + b.wanted);
        break;
      case 5:
        set(target, a.number - b.number, a.wanted - b.wanted);
        break;
      case 6:
        set(target, a.number * b.number, a.wanted * b.wanted);
        break;
      case 7:
        divide(target, a, b);
        break;
      case 8:
        set(target, -a.number, -a.wanted);
        break;
      case 9:
        set(target, brum::abs(a.number), ::abs(a.wanted));
        break;
      case 10:
        set(target, a.number.get_num(), mpq_class(a.wanted.get_num()));
        break;
      case 11:
        set(target, a.number.get_den(), mpq_class(a.wanted.get_den()));
        break;
      case 12: {
        const QNumber copy(a.number);
        require(copy.is_big() == a.number.is_big(), "a copy has the form");
        set(target, copy, mpq_class(a.wanted));
        break;
      }
      case 13:
        compare(a, b);
        break;
      case 14:
        target.number.normalize();
        break;
      default: {
        QNumber fresh;
        fresh = a.number;
        require(fresh.is_big() == a.number.is_big(), "assignment to zero gives the form");
        set(target, fresh, mpq_class(a.wanted));
        break;
      }
    }
    check(target);
    if (mpz_sizeinbase(target.wanted.get_num_mpz_t(), 10) > most_digits ||
        mpz_sizeinbase(target.wanted.get_den_mpz_t(), 10) > most_digits)
      set(target, QNumber(1), mpq_class(1));
  }

 private:
  Pair& any(FuzzInput& input) { return pairs_[input.byte() % pairs_.size()]; }

  static void set(Pair& pair, const QNumber& number, const mpq_class& wanted) {
    const bool was_big = pair.number.is_big();
    const mpq_class kept = wanted;
    pair.number = number;
    require(pair.number.is_big() || !was_big, "a big number stays big");
    pair.wanted = kept;
  }

  static void make_of_machine_integers(Pair& target, FuzzInput& input) {
    const std::int64_t num = any_int64(input);
    const std::int64_t den = any_int64(input);
    if (den == 0) {
      expect_refusal([&] { QNumber(num, den); });
      return;
    }
    set(target, QNumber(num, den), fraction(to_mpz(num), to_mpz(den)));
  }

  static void make_of_gmp_integers(Pair& target, FuzzInput& input) {
    const mpz_class num = any_mpz(input);
    const mpz_class den = any_mpz(input);
    if (den == 0) {
      expect_refusal([&] { QNumber(num, den); });
      return;
    }
    const QNumber made(num, den);
    const bool fits = num.fits_sint_p() && den.fits_sint_p();
    require(made.is_big() != fits, "the form of what is made of GMP integers");
    set(target, made, fraction(num, den));
  }

  static void divide(Pair& target, const Pair& a, const Pair& b) {
    if (b.wanted == 0)
      expect_refusal([&] { a.number / b.number; });
    else
      set(target, a.number / b.number, mpq_class(a.wanted / b.wanted));
  }

  template <class Operation>
  static void expect_refusal(const Operation& operation) {
    try {
      operation();
      require(false, "a zero denominator is refused");
    } catch (const Exception& error) {
      require(*error.what() != '\0', "an error has a message");
    }
  }

  /// Any bytes, or digits with a separator: refused, or read as what they say.
  static void read(Pair& target, FuzzInput& input) {
    std::string text;
    const std::uint8_t kind = input.byte();
    if (kind < 64) {
      text = input.text(input.below(20));
    } else {
      text = kind % 2 == 0 ? "" : "-";
      for (std::size_t left = 1 + input.below(kind % 3 == 0 ? 60 : 8); left > 0; --left)
        text += static_cast<char>('0' + input.below(10));
      if (kind > 128) {
        text += kind < 192 ? '.' : '/';
        for (std::size_t left = 1 + input.below(20); left > 0; --left)
          text += static_cast<char>('0' + input.below(10));
      }
    }
    mpq_class wanted;
    const bool is_number = parse(text, wanted);
    try {
      const QNumber number = QNumber::from_string(text);
      require(is_number, "a text that is no number is refused", text);
      set(target, number, wanted);
    } catch (const Exception&) {
      require(!is_number, "a number is read", text);
    }
  }

  static bool parse(const std::string& text, mpq_class& value) {
    std::string digits[2];
    char separator = '\0';
    const bool negative = !text.empty() && text[0] == '-';
    for (const char c : text.substr(negative ? 1 : 0)) {
      if (c >= '0' && c <= '9')
        digits[separator == '\0' ? 0 : 1] += c;
      else if ((c == '.' || c == '/') && separator == '\0')
        separator = c;
      else
        return false;
    }
    if (digits[0].empty() || (separator != '\0' && digits[1].empty()))
      return false;
    mpz_class num(digits[0], 10);
    mpz_class den = 1;
    if (separator == '/') {
      den = mpz_class(digits[1], 10);
    } else if (separator == '.') {
      num = mpz_class(digits[0] + digits[1], 10);
      mpz_ui_pow_ui(den.get_mpz_t(), 10, digits[1].size());
    }
    if (den == 0)
      return false;
    value = fraction(negative ? mpz_class(-num) : num, den);
    return true;
  }

  static void compare(const Pair& a, const Pair& b) {
    const int wanted = cmp(a.wanted, b.wanted);
    require((a.number == b.number) == (wanted == 0), "==");
    require((a.number != b.number) == (wanted != 0), "!=");
    require((a.number < b.number) == (wanted < 0), "<");
    require((a.number <= b.number) == (wanted <= 0), "<=");
    require((a.number > b.number) == (wanted > 0), ">");
    require((a.number >= b.number) == (wanted >= 0), ">=");
    if (wanted == 0)
      require(a.number.hash() == b.number.hash(), "equal numbers hash alike");
  }

  static void check(const Pair& pair) {
    const QNumber& number = pair.number;
    const mpz_class num = pair.wanted.get_num();
    const mpz_class den = pair.wanted.get_den();
    const std::string text = pair.wanted.get_str();
    require(number.to_str() == text, "the text", number.to_str() + " and " + text);
    std::ostringstream out;
    out << std::hex << std::showpos << number;
    require(out.str() == text, "the text on a stream", out.str() + " and " + text);
    require(number.num_mpz() == num && number.den_mpz() == den, "numerator and denominator");
    require(number.sign() == sgn(pair.wanted), "the sign");
    require(number.is_integer() == (den == 1), "whether it is an integer");
    const bool fits = den == 1 && num >= 0 && mpz_sizeinbase(num.get_mpz_t(), 2) <= 64;
    const auto value = number.to_uint64();
    require(value.has_value() == fits, "whether it is an unsigned machine integer");
    if (fits)
      require(*value == mpz_get_ui(num.get_mpz_t()), "the unsigned machine integer");
  }

  std::array<Pair, 6> pairs_;
};

}  // namespace

}  // namespace brum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brum::fuzz::FuzzInput input(data, size);
  brum::fuzz::Numbers numbers;
  for (std::size_t step = 0; !input.at_end() && step < brum::fuzz::most_steps; ++step)
    numbers.step(input);
  return 0;
}
