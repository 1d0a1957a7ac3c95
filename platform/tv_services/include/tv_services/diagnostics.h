/// \file
/// Creates, throws and reports diagnostics.
///
/// A diagnostic that is returned as a plain pointer is owned by the caller. Functions that take a
/// reference to the pointer consume the diagnostic and set the pointer to null.
#pragma once

#include <fnd/except.h>
#include <fnd/export.h>
#include <tvtypes_res/base_msg_id.h>

#include <cassert>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// A sequence of messages: the first is the error or warning, the others are its causes and
/// context.
class TV_PLATFORM_API tvsvDiagnosticImpl {
  public:
    /// Creates a diagnostic without elements.
    tvsvDiagnosticImpl() = default;
    /// Creates a diagnostic of one element, with the text of the built-in catalogue.
    explicit tvsvDiagnosticImpl(const msgcore::BaseMsgID& message);

    /// Returns the number of elements.
    std::size_t size() const { return elements_.size(); }

    /// \name Elements
    /// @{

    /// Returns the full id, such as TorvaneTypes::general::InvalidDataTypeId, the arguments in
    /// order, numbers in decimal, or the sentence with the arguments filled in. Throws
    /// std::out_of_range unless `index` is less than size().
    const std::string& messageId(std::size_t index) const { return elements_.at(index).id; }
    const std::vector<std::string>& arguments(std::size_t index) const {
        return elements_.at(index).arguments;
    }
    const std::string& text(std::size_t index) const { return elements_.at(index).text; }
    /// @}

    /// Returns the sentences of all elements, one line each.
    std::string wholeText() const;

    /// Appends copies of the elements of another diagnostic.
    void append(const tvsvDiagnosticImpl& other);

    /// Removes all elements but the first. \pre There is one.
    void keepFirst() {
        assert(!elements_.empty());
        elements_.erase(elements_.begin() + 1, elements_.end());
    }

  private:
    struct Element {
        std::string id;
        std::vector<std::string> arguments;
        std::string text;
    };
    std::vector<Element> elements_;
};

/// Creates a diagnostic of one element. The caller owns it.
TV_PLATFORM_API tvsvDiagnosticImpl*
tvsvCreateDiagnosticFromMessageID(const msgcore::BaseMsgID& message);

/// Creates the diagnostic of an allocation failure. The caller owns it.
TV_PLATFORM_API tvsvDiagnosticImpl* tvsvCreateMemoryAllocationDiagnostic();

/// Copies the diagnostic of an exception: all elements with `wholeChain`, else the first only. The
/// caller owns the copy.
TV_PLATFORM_API tvsvDiagnosticImpl*
tvsvCreateDiagnosticFromIException(const fnd::except::IException& exception, bool wholeChain);

/// Throws a fnd::except::IUserException with the diagnostic, which is consumed. If `context` is not
/// null, the exception's text begins with it and a colon. \pre The diagnostic is not null.
[[noreturn]] TV_PLATFORM_API void tvsvThrowIExceptionFromDiagnostic(tvsvDiagnosticImpl*& diagnostic,
                                                                    const char* context);

/// Calls the warning handler with the diagnostic, which is consumed. \pre The diagnostic is not
/// null.
TV_PLATFORM_API void tvsvReportAsWarning(tvsvDiagnosticImpl*& diagnostic);

/// Appends the elements of `second`, which is consumed, to `first`. Each may be null.
/// \param asCause whether the second explains the first. Not used: the order is the same
TV_PLATFORM_API void tvsvConcatenateDiagnostics(tvsvDiagnosticImpl*& first,
                                                tvsvDiagnosticImpl*& second, bool asCause);

/// Destroys a diagnostic; null is ignored.
TV_PLATFORM_API void tvsvDiscardDiagnostic(tvsvDiagnosticImpl*& diagnostic);

/// Function that is called for each warning.
using tvsvWarningHandler = std::function<void(const tvsvDiagnosticImpl&)>;

/// Installs the warning handler of the process and returns the previous one. The initial handler
/// writes "warning: " and the text to standard error; an empty handler ignores warnings. Not
/// thread-safe.
TV_PLATFORM_API tvsvWarningHandler tvsvSetWarningHandler(tvsvWarningHandler handler);
