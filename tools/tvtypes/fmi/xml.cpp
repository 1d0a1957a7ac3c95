#include "fmi/xml.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <new>
#include <string>

namespace tvtool::fmi {

namespace {

constexpr int chunkSize = 64 * 1024;

std::uint64_t currentLine(XML_Parser parser) { return XML_GetCurrentLineNumber(parser); }
std::uint64_t currentColumn(XML_Parser parser) { return XML_GetCurrentColumnNumber(parser) + 1; }

struct Run {
    XML_Parser parser;
    XmlHandler& handler;
    std::exception_ptr failure;

    /// Calls, and keeps an exception until the parser has returned: it must not pass through the
    /// parser, which is written in C.
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
};

void onStart(void* userData, const XML_Char* name, const XML_Char** attributes) {
    Run& run = *static_cast<Run*>(userData);
    const Position position{static_cast<std::uint32_t>(currentLine(run.parser)),
                            static_cast<std::uint32_t>(currentColumn(run.parser))};
    run.guarded([&] { run.handler.startElement(name, attributes, position); });
}

void onEnd(void* userData, const XML_Char* /*name*/) {
    Run& run = *static_cast<Run*>(userData);
    run.guarded([&] { run.handler.endElement(); });
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

} // namespace

void parseXml(const Source& source, XmlHandler& handler) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    if (!parser) {
        throw std::bad_alloc();
    }
    Run run{parser.get(), handler, nullptr};
    XML_SetUserData(parser.get(), &run);
    XML_SetElementHandler(parser.get(), onStart, onEnd);

    bool isLast = false;
    while (!isLast) {
        void* const buffer = XML_GetBuffer(parser.get(), chunkSize);
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        const std::size_t count = source({static_cast<char*>(buffer), chunkSize});
        isLast = count == 0;
        const XML_Status status =
            XML_ParseBuffer(parser.get(), static_cast<int>(count), isLast ? XML_TRUE : XML_FALSE);
        if (run.failure) {
            std::rethrow_exception(run.failure);
        }
        if (status != XML_STATUS_OK) {
            const XML_Error code = XML_GetErrorCode(parser.get());
            if (code == XML_ERROR_NO_MEMORY) {
                throw std::bad_alloc();
            }
            throw files::ReadError(errorSentence(code), currentLine(parser.get()),
                                   currentColumn(parser.get()));
        }
    }
}

} // namespace tvtool::fmi
