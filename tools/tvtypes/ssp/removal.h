/// \file
/// Removal of a system that could not be read.
#pragma once

#include "ssp/records.h"

#include <cstddef>

namespace tvtool::ssp {

/// Removes the last system, with the records in it, unless it is cancelled.
class Removal {
  public:
    /// To be called when the record of the system has been added, and before those in it.
    explicit Removal(Package& package)
        : package_(package),
          sets_(package.sets.size()),
          mappings_(package.mappings.size()),
          dictionaries_(package.dictionaries.size()) {}
    ~Removal() {
        if (isActive_) {
            shrink(package_.sets, sets_);
            shrink(package_.mappings, mappings_);
            shrink(package_.dictionaries, dictionaries_);
            package_.systems.pop_back();
        }
    }
    Removal(const Removal&) = delete;
    Removal& operator=(const Removal&) = delete;

    void cancel() { isActive_ = false; }

  private:
    template <class Records>
    static void shrink(Records& records, std::size_t size) {
        while (records.size() > size) {
            records.pop_back();
        }
    }

    Package& package_;
    std::size_t sets_;
    std::size_t mappings_;
    std::size_t dictionaries_;
    bool isActive_ = true;
};

} // namespace tvtool::ssp
