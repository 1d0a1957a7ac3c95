#pragma once

#include <string>

struct oxArray_tag;
struct oxdFile_tag;

oxdFile_tag* oxdOpen(const std::u16string& path, const char* mode);
oxArray_tag* oxdGetVariable(oxdFile_tag* file, const char* name);
void oxdClose(oxdFile_tag* file);
std::string oxdLastError();
