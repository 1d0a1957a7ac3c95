#include "ssp/namespaces.h"

#include "text/quote.h"

#include <algorithm>
#include <array>

namespace tvtool::ssp {

namespace {

using findings::Code;
using text::quoted;

constexpr std::string_view root = "http://ssp-standard.org/SSP1/";

struct Name {
    std::string_view prefix; ///< the usual one
    std::string_view uri;    ///< below the root
};

/// In the order of Vocabulary.
constexpr std::array<Name, 5> names{{{"ssd", "SystemStructureDescription"},
                                     {"ssc", "SystemStructureCommon"},
                                     {"ssv", "SystemStructureParameterValues"},
                                     {"ssm", "SystemStructureParameterMapping"},
                                     {"ssb", "SystemStructureSignalDictionary"}}};

Vocabulary vocabulary(std::string_view text, std::string_view Name::*member) {
    const auto found = std::ranges::find(names, text, member);
    return static_cast<Vocabulary>(found - names.begin());
}

Vocabulary vocabularyOfUri(std::string_view uri) {
    return uri.starts_with(root) ? vocabulary(uri.substr(root.size()), &Name::uri)
                                 : Vocabulary::Foreign;
}

/// Returns whether a namespace is meant to be one of the standard.
bool isMisspelt(std::string_view uri) {
    return uri.find("ssp-standard.org/SSP1/") != std::string_view::npos;
}

} // namespace

bool isForeignAttribute(std::string_view name) {
    return name == "xmlns" || name.find(':') != std::string_view::npos;
}

std::pair<Vocabulary, std::string_view>
Namespaces::enter(std::string_view name, const char* const* attributes, const Place& place) {
    ++depth_;
    for (; *attributes != nullptr; attributes += 2) {
        const std::string_view attribute = attributes[0];
        if (attribute == "xmlns" || attribute.starts_with("xmlns:")) {
            declarations_.push_back(
                {depth_, std::string(attribute.substr(std::min<std::size_t>(6, attribute.size()))),
                 attributes[1]});
        }
    }
    const std::size_t colon = name.find(':');
    const std::string_view prefix = name.substr(0, colon == std::string_view::npos ? 0 : colon);
    const std::string_view local = colon == std::string_view::npos ? name : name.substr(colon + 1);
    const auto declaration =
        std::find_if(declarations_.rbegin(), declarations_.rend(),
                     [&](const Declaration& candidate) { return candidate.prefix == prefix; });
    const Vocabulary usual = prefix.empty() ? usual_ : vocabulary(prefix, &Name::prefix);
    if (declaration == declarations_.rend()) {
        addOnce(prefix.empty() ? Code::NamespaceMissing : Code::NamespaceUndeclared, place, prefix,
                "");
        return {usual, local};
    }
    const Vocabulary declared = vocabularyOfUri(declaration->uri);
    if (declared == Vocabulary::Foreign && isMisspelt(declaration->uri)) {
        addOnce(Code::NamespaceUnknown, place, prefix, declaration->uri);
        return {usual == Vocabulary::Foreign ? usual_ : usual, local};
    }
    return {declared, local};
}

void Namespaces::leave() {
    while (!declarations_.empty() && declarations_.back().depth == depth_) {
        declarations_.pop_back();
    }
    --depth_;
}

void Namespaces::addOnce(Code code, const Place& place, std::string_view prefix,
                         std::string_view uri) {
    if (!reported_.emplace(code, prefix).second) {
        return;
    }
    switch (code) {
    case Code::NamespaceMissing:
        return findings_.add(code, place, {}, "element {} is in no namespace",
                             quoted(place.element));
    case Code::NamespaceUndeclared:
        return findings_.add(code, place, {}, "prefix {} is not declared", quoted(prefix));
    default:
        return findings_.add(code, place, {}, "{} is no namespace of the standard", quoted(uri));
    }
}

} // namespace tvtool::ssp
