/// \file
/// Reading of systems and components, with their connectors, connections, bindings and sources.
#pragma once

#include "ssp/element_text.h"
#include "ssp/references.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::ssp {

/// Reads the elements of one system file. In a file of another kind, no element is open.
class StructureReader {
  public:
    /// \param system and references null for files of other kinds
    StructureReader(ElementText& element, SystemFile* system, References* references)
        : element_(element), system_(system), references_(references) {}

    /// Returns the innermost open element; null if none is open.
    Element* current() { return open_.empty() ? nullptr : open_.back(); }

    /// Read the attributes of the element that begins or ends. \{
    void start(Node node);
    void end() { open_.pop_back(); }
    Connector& startConnector();
    Connection& startConnection();
    void startBinding();
    void endBinding();
    void startBindingMapping();
    void endBindingMapping();
    void startDictionary(SignalDictionary& dictionary);
    /// \param hasContent whether the definitions and entries are in this file
    void endDictionary(bool hasContent);
    /// \}

  private:
    /// An element that has a source, or else content.
    struct Content {
        Place place;
        bool isRequired = false; ///< as there is no source, and the type is one that is read
    };

    void readComponent(Element& component);
    Content startContent(std::string_view standardType, ReferenceKind kind,
                         SignalDictionary* dictionary = nullptr);
    void checkContent(const Content& content, bool hasContent, const char* sentence) const;

    ElementText& element_;
    SystemFile* system_;
    References* references_;
    std::vector<Element*> open_;
    /// Names of elements and connectors, each with its owner.
    boost::unordered_flat_set<std::pair<const void*, std::string_view>> names_;
    Content binding_;
    Content mapping_;
    Content dictionary_;
    std::size_t connectors_ = 0;
    std::size_t connections_ = 0;
};

} // namespace tvtool::ssp
