/// \file
/// Reading of units and enumerations, and of their uses.
#pragma once

#include "ssp/element_text.h"

#include <string_view>
#include <vector>

namespace tvtool::ssp {

/// Reads the definitions of one file from an element that the caller sets before each call.
class DefinitionReader {
  public:
    explicit DefinitionReader(ElementText& element) : element_(element) {}

    /// Reads an element of a definition. \param scope the definitions that contain it
    void read(Node node, Definitions& scope);
    void endEnumeration();
    void endUnit();

    /// Keeps the names that a type uses; empty for none.
    void use(std::string_view unit, std::string_view enumeration, const Place& place);

    /// Checks that the names used since the last call are defined, and that no name is defined
    /// twice.
    void checkUses(const Definitions& scope);

  private:
    struct Use {
        std::string_view unit;
        std::string_view enumeration;
        Place place;
    };

    void readItem();
    void readBaseUnit();

    ElementText& element_;
    Definitions* scope_ = nullptr;
    Enumeration enumeration_;
    exchange::UnitDefinition unit_;
    bool hasBaseUnit_ = false;
    std::size_t items_ = 0;
    std::vector<Use> uses_;
};

} // namespace tvtool::ssp
