#include "exchange/xml.h"

#include "exchange/bounds.h"

#include <fmt/format.h>

// Declares the functions that limit the expansion of entities.
#define XML_DTD
#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::exchange {

namespace {

using Bytes = std::ptrdiff_t;

constexpr Bytes mebibyte = 1 << 20;
constexpr Bytes smallestPiece = 64 * 1024;

// Limits of time and memory, far above the descriptions of real models.
constexpr Bytes longestToken = 16 * mebibyte;
constexpr Bytes longestDoctype = 1 * mebibyte;
constexpr Bytes longestWithEntities = 16 * mebibyte;
constexpr float largestExpansion = 2; ///< of entities, relative to the text without them

std::uint64_t currentLine(XML_Parser parser) { return XML_GetCurrentLineNumber(parser); }
std::uint64_t currentColumn(XML_Parser parser) { return XML_GetCurrentColumnNumber(parser) + 1; }

void checkLength(Bytes length, Bytes limit, const char* thing) {
    if (length > limit) {
        throw files::ReadError(fmt::format("{} is longer than {} MiB", thing, limit / mebibyte));
    }
}

/// Counts different names; those with equal hashes count once.
class NameCounter {
  public:
    void add(std::string_view name) {
        const std::size_t hash = std::hash<std::string_view>()(name) % seen_.size();
        count_ += seen_[hash] ? 0 : 1;
        seen_[hash] = true;
        checkBound(count_, nameBound);
    }

  private:
    std::vector<bool> seen_ = std::vector<bool>(std::size_t{1} << 20);
    std::size_t count_ = 0;
};

/// One parsing of a text: the position and what counts towards the limits.
struct Run {
    XML_Parser parser;
    XmlHandler& handler;
    std::exception_ptr failure = nullptr;
    Bytes read = 0;
    std::optional<Bytes> doctype = std::nullopt; ///< position of the open document type declaration
    std::size_t depth = 0;
    std::size_t elements = 0;
    std::size_t attributes = 0;
    std::size_t declarations = 0; ///< of entities and attributes
    NameCounter names = {};

    /// Position of the token that is handled, or after a call of the parser of an incomplete one.
    Bytes tokenStart() const { return std::max<Bytes>(XML_GetCurrentByteIndex(parser), 0); }

    /// Calls, and keeps an exception until the parser has returned: it must not pass through the
    /// parser, which is written in C. A files::ReadError gets the position of the token.
    template <class Call>
    void guarded(Call call) noexcept {
        try {
            if (!failure) {
                call();
            }
        } catch (const files::ReadError& error) {
            failure = std::make_exception_ptr(
                files::ReadError(error.what(), currentLine(parser), currentColumn(parser)));
        } catch (...) {
            failure = std::current_exception();
        }
        if (failure) {
            XML_StopParser(parser, XML_FALSE);
        }
    }

    void countElement(const char* name, const char* const* nameAndValue) {
        names.add(name);
        checkBound(++elements, elementBound);
        checkBound(++depth, levelBound);
        for (; *nameAndValue != nullptr; nameAndValue += 2) {
            names.add(*nameAndValue);
            ++attributes;
        }
        checkBound(attributes, attributeBound);
    }

    void checkPiece() const {
        checkLength(read - tokenStart(), longestToken, "a tag or comment");
        checkLength(read, static_cast<Bytes>(largestDescription), "the description");
        checkBound(currentLine(parser), lineBound);
        if (doctype) {
            checkLength(tokenStart() - *doctype, longestDoctype, "the document type declaration");
        }
        if (declarations > 0) {
            checkLength(read, longestWithEntities, "a description with declared entities");
        }
    }
};

Run& runOf(void* userData) { return *static_cast<Run*>(userData); }

void onStart(void* userData, const XML_Char* name, const XML_Char** attributes) {
    Run& run = runOf(userData);
    run.guarded([&] {
        run.countElement(name, attributes);
        const Position position{static_cast<std::uint32_t>(currentLine(run.parser)),
                                static_cast<std::uint32_t>(currentColumn(run.parser))};
        run.handler.startElement(name, attributes, position);
    });
}

void onEnd(void* userData, const XML_Char* /*name*/) {
    Run& run = runOf(userData);
    --run.depth;
    run.guarded([&] { run.handler.endElement(); });
}

void onDoctypeStart(void* userData, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    runOf(userData).doctype = runOf(userData).tokenStart();
}

void onDoctypeEnd(void* userData) { runOf(userData).doctype.reset(); }

void countDeclaration(void* userData) {
    Run& run = runOf(userData);
    run.guarded([&] { checkBound(++run.declarations, declarationBound); });
}

void onEntity(void* userData, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
              const XML_Char*, const XML_Char*, const XML_Char*) {
    countDeclaration(userData);
}

void onAttribute(void* userData, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*,
                 int) {
    countDeclaration(userData);
}

std::string errorSentence(XML_Error code) {
    switch (code) {
    case XML_ERROR_NO_ELEMENTS:
    case XML_ERROR_UNCLOSED_TOKEN:
    case XML_ERROR_UNCLOSED_CDATA_SECTION:
    case XML_ERROR_PARTIAL_CHAR:
        return "the XML text ends too early";
    case XML_ERROR_INVALID_TOKEN:
        return "not well-formed XML, or not in the encoding that it names";
    case XML_ERROR_UNKNOWN_ENCODING:
        return "the encoding that the XML declaration names is not known";
    case XML_ERROR_INCORRECT_ENCODING:
        return "the encoding that the XML declaration names is not that of the text";
    case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
        return "the XML entities expand to far more text than the file holds";
    default:
        return std::string("not XML: ") + XML_ErrorString(code);
    }
}

/// Fills the buffer unless the source ends before, also from a pipe. Returns the number of bytes.
std::size_t readFully(const Source& source, std::span<char> buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const std::size_t count = source(buffer.subspan(filled));
        if (count == 0) {
            break;
        }
        filled += count;
    }
    return filled;
}

} // namespace

void parseXml(const Source& source, XmlHandler& handler) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> owner(
        XML_ParserCreate(nullptr), XML_ParserFree);
    XML_Parser const parser = owner.get();
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    Run run{parser, handler};
    XML_SetUserData(parser, &run);
    XML_SetElementHandler(parser, onStart, onEnd);
    XML_SetDoctypeDeclHandler(parser, onDoctypeStart, onDoctypeEnd);
    XML_SetEntityDeclHandler(parser, onEntity);
    XML_SetAttlistDeclHandler(parser, onAttribute);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser, largestExpansion);

    for (bool isLast = false; !isLast;) {
        // The parser scans an incomplete token again with each piece. Pieces as long as the
        // scanned part of the token keep the time linear.
        const Bytes pending = run.read - run.tokenStart();
        const auto piece = static_cast<std::size_t>(
            std::min(std::max(pending, smallestPiece), longestToken + 1 - pending));
        void* const buffer = XML_GetBuffer(parser, static_cast<int>(piece));
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        const std::size_t count = readFully(source, {static_cast<char*>(buffer), piece});
        run.read += static_cast<Bytes>(count);
        isLast = count < piece;
        const XML_Status status =
            XML_ParseBuffer(parser, static_cast<int>(count), isLast ? XML_TRUE : XML_FALSE);
        if (status == XML_STATUS_OK) {
            run.guarded([&] { run.checkPiece(); });
        }
        if (run.failure) {
            std::rethrow_exception(run.failure);
        }
        if (status != XML_STATUS_OK) {
            const XML_Error code = XML_GetErrorCode(parser);
            if (code == XML_ERROR_NO_MEMORY) {
                throw std::bad_alloc();
            }
            throw files::ReadError(errorSentence(code), currentLine(parser), currentColumn(parser));
        }
    }
}

} // namespace tvtool::exchange
