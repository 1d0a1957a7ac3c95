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

    /// Keeps the names that the type of the element uses; empty for none.
    void use(std::string_view unit, std::string_view enumeration, const Definitions& scope);

    /// Checks that the names used in a scope are defined, and that no name is defined twice. Called
    /// at the end of the scope, which contains no scope that is open.
    void checkUses(const Definitions& scope);

  private:
    struct Use {
        const Definitions* scope = nullptr;
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
