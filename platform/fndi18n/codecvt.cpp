#include "utf8.h"

#include <fndi18n/codecvt.h>

#include <unicode/ucnv.h>

#include <stdexcept>

namespace fnd::i18n {

namespace {

icu::LocalUConverterPointer open(const std::string& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    icu::LocalUConverterPointer converter(ucnv_open(encoding.c_str(), &status));
    if (U_FAILURE(status)) {
        throw std::invalid_argument("unknown encoding \"" + encoding + "\"");
    }
    return converter;
}

} // namespace

codecvt_ustring_to_string::codecvt_ustring_to_string(const std::string& encoding,
                                                     bool /*substitute*/)
    : encoding_(encoding) {
    if (!encoding_.empty() && ucnv_getType(open(encoding_).getAlias()) == UCNV_UTF8) {
        encoding_.clear();
    }
}

std::string codecvt_ustring_to_string::operator()(const fnd::ustring& text) const {
    if (encoding_.empty()) {
        return toUtf8(text);
    }
    const std::int32_t length = checkedLength(text.size());
    const icu::LocalUConverterPointer converter = open(encoding_);
    std::string result(text.size(), '\0');
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const auto capacity = static_cast<int32_t>(result.size());
        const int32_t needed = ucnv_fromUChars(converter.getAlias(), result.data(), capacity,
                                               text.data(), length, &status);
        result.resize(static_cast<std::size_t>(needed));
        if (status != U_BUFFER_OVERFLOW_ERROR) {
            return result;
        }
    }
}

} // namespace fnd::i18n
