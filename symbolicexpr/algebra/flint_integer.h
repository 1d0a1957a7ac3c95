/// \file
/// Integers in FLINT's representation. Included by the two files that call FLINT only.
///
/// FLINT ends the process on an impossible request, so callers check preconditions: divisors are
/// not zero, and operands of products and powers are within the limits of limits.h.
#pragma once

#include "algebra/flint_memory.h"
#include "algebra/integer.h"

#include <flint/fmpz.h>

namespace TV {

struct Integer::Big {
    Big() { fmpz_init(value); }
    ~Big() { fmpz_clear(value); }
    Big(const Big&) = delete;
    Big& operator=(const Big&) = delete;

    fmpz_t value;
};

/// A copy of an integer as an fmpz_t.
class FlintInteger {
  public:
    FlintInteger() { fmpz_init(value_); }
    explicit FlintInteger(const Integer& integer) : FlintInteger() {
        if (integer.big_) {
            fmpz_set(value_, integer.big_->value);
        } else {
            fmpz_set_si(value_, integer.value_);
        }
    }
    ~FlintInteger() { fmpz_clear(value_); }
    FlintInteger(const FlintInteger&) = delete;
    FlintInteger& operator=(const FlintInteger&) = delete;

    fmpz* get() { return value_; }

    Integer integer() const {
        Integer integer;
        if (fmpz_fits_si(value_)) {
            integer.value_ = fmpz_get_si(value_);
        } else {
            integer.value_ = 0;
            integer.big_.reset(new Integer::Big);
            fmpz_set(integer.big_->value, value_);
        }
        return integer;
    }

  private:
    fmpz_t value_;
};

} // namespace TV
