#include "ssp/element_text.h"

#include "exchange/values.h"
#include "ssp/namespaces.h"
#include "text/quote.h"

namespace tvtool::ssp {

using findings::Code;
using text::quoted;

void ElementText::start(const ElementRule& rule, const char* const* attributes,
                        const Place& place) {
    attributes_ = attributes;
    place_ = {rule.name, place.line, place.column};
    subject = {};
    for (; *attributes != nullptr; attributes += 2) {
        const std::string_view name = attributes[0];
        if (isForeignAttribute(name)) {
            continue;
        }
        if (!hasAttribute(rule, name)) {
            addForAttribute(Code::AttributeUnexpected, name,
                            "attribute {} is not expected here and is ignored", quoted(name));
        } else if (isNewAttribute(rule, name)) {
            addNewFeature(place_, fmt::format("attribute {}", name));
        }
    }
}

const char* ElementText::attribute(std::string_view name) const {
    for (const char* const* attribute = attributes_; *attribute != nullptr; attribute += 2) {
        if (name == *attribute) {
            return attribute[1];
        }
    }
    return nullptr;
}

std::string_view ElementText::text(std::string_view name) const {
    const char* const value = attribute(name);
    return value == nullptr ? "" : file_.texts.intern(exchange::trimmed(value));
}

std::string_view ElementText::untrimmed(std::string_view name) const {
    const char* const value = attribute(name);
    return value == nullptr ? "" : file_.texts.keep(value);
}

std::string_view ElementText::required(std::string_view name) const {
    const char* const value = attribute(name);
    if (value == nullptr) {
        addForAttribute(Code::AttributeMissing, name, "{} is missing", name);
    } else if (*value == '\0') {
        addForAttribute(Code::NameEmpty, name, "{} is empty", name);
    }
    return value == nullptr ? "" : file_.texts.intern(value);
}

bool ElementText::boolean(std::string_view name) const {
    const std::string_view value = text(name);
    if (has(name) && !exchange::isValue(value, exchange::BaseType::Boolean)) {
        addInvalid(name, value, "Boolean value");
    }
    return value == "true" || value == "1";
}

void ElementText::readVersion() {
    const std::string_view version = text("version");
    isOld_ = version == "1.0";
    if (!has("version")) {
        addForAttribute(Code::AttributeMissing, "version", "version is missing");
    } else if (version != "1.0" && version != "2.0") {
        add(Code::VersionUnknown, "the version is {}", quoted(version));
    }
}

void ElementText::addNewFeature(const Place& place, const std::string& feature) const {
    if (isOld_) {
        file_.findings.addWithCause(Code::VersionFeature, place, {}, feature,
                                    "{} is new in version 2.0, and the file is of version 1.0",
                                    feature);
    }
}

void ElementText::addInvalid(std::string_view attribute, std::string_view value,
                             const char* kind) const {
    addForAttribute(Code::ValueInvalid, attribute, "{} {} is no {}", attribute, quoted(value),
                    kind);
}

} // namespace tvtool::ssp
