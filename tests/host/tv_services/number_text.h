#pragma once

#include <string>

std::string tvsv_dtoa(double x, bool flag);
std::string tvsv_dtoa_fitools(double x);
