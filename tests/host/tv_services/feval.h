#pragma once

#include <memory>

class tvsvDiagnosticImpl;
struct oxArray_tag;
struct TOxArrayDeleter;

tvsvDiagnosticImpl* tvsvFEVAL_NoThrow(int outCount, oxArray_tag** outputs, int inCount,
                                      oxArray_tag** inputs, const char* functionName, bool flag,
                                      std::unique_ptr<oxArray_tag, TOxArrayDeleter>* extra);
