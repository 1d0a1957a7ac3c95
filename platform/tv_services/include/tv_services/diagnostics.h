/// \file
/// The road of refusals and warnings: a message becomes a diagnostic, and a diagnostic is thrown,
/// reported as a warning, joined to another, or discarded.
///
/// A diagnostic handed out as a plain pointer belongs to the receiver, who passes it on to one of
/// the operations that take it by reference. Those consume it and leave null behind.
#pragma once

#include <fnd/except.h>
#include <fnd/export.h>
#include <tvtypes_res/base_msg_id.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// What went wrong: a sequence of elements, the first being the matter itself and the later ones
/// its circumstances. Indices start at 0 and must be below size().
class TV_PLATFORM_API tvsvDiagnosticImpl {
  public:
    tvsvDiagnosticImpl() = default;
    explicit tvsvDiagnosticImpl(const msgcore::BaseMsgID& message);

    std::size_t size() const { return elements_.size(); }

    /// The full id, such as TorvaneTypes::general::InvalidDataTypeId.
    const std::string& messageId(std::size_t index) const { return elements_.at(index).id; }

    /// The message's arguments in order, numbers in decimal.
    const std::vector<std::string>& arguments(std::size_t index) const {
        return elements_.at(index).arguments;
    }

    /// The sentence with the arguments filled in.
    const std::string& text(std::size_t index) const { return elements_.at(index).text; }

    /// The sentences of all elements, a line each.
    std::string wholeText() const;

    /// Adds the elements of another diagnostic behind this one's.
    void append(const tvsvDiagnosticImpl& other);

    /// Drops all elements but the first.
    void keepFirst() { elements_.erase(elements_.begin() + 1, elements_.end()); }

  private:
    struct Element {
        std::string id;
        std::vector<std::string> arguments;
        std::string text;
    };
    std::vector<Element> elements_;
};

/// A diagnostic of one element. The caller owns it.
TV_PLATFORM_API tvsvDiagnosticImpl*
tvsvCreateDiagnosticFromMessageID(const msgcore::BaseMsgID& message);

/// A diagnostic which says that memory ran out. The caller owns it.
TV_PLATFORM_API tvsvDiagnosticImpl* tvsvCreateMemoryAllocationDiagnostic();

/// A copy of the diagnostic that an exception carries. The caller owns it. `wholeChain` asks for
/// all elements; without it, only the first is taken.
TV_PLATFORM_API tvsvDiagnosticImpl*
tvsvCreateDiagnosticFromIException(const fnd::except::IException& exception, bool wholeChain);

/// Throws a fnd::except::IUserException that carries the diagnostic, and takes it over. `context`,
/// if not null, is put before the exception's text.
[[noreturn]] TV_PLATFORM_API void tvsvThrowIExceptionFromDiagnostic(tvsvDiagnosticImpl*& diagnostic,
                                                                    const char* context);

/// Hands the diagnostic to the warning handler, and destroys it.
TV_PLATFORM_API void tvsvReportAsWarning(tvsvDiagnosticImpl*& diagnostic);

/// Adds the elements of `second` behind those of `first`, which may be null and is then set;
/// `second` is consumed. `asCause` says that the second explains the first; the elements are kept
/// in the same order either way.
TV_PLATFORM_API void tvsvConcatenateDiagnostics(tvsvDiagnosticImpl*& first,
                                                tvsvDiagnosticImpl*& second, bool asCause);

/// Destroys a diagnostic; null is accepted.
TV_PLATFORM_API void tvsvDiscardDiagnostic(tvsvDiagnosticImpl*& diagnostic);

/// Where warnings go.
using tvsvWarningHandler = std::function<void(const tvsvDiagnosticImpl&)>;

/// Installs the handler of warnings for the whole process, and gives the one that was there. The
/// first handler writes "warning: " and the text to standard error; an empty handler drops them.
TV_PLATFORM_API tvsvWarningHandler tvsvSetWarningHandler(tvsvWarningHandler handler);
