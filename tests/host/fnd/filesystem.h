#pragma once

#include <string>

namespace fnd::filesystem {

std::u16string get_install_path();

} // namespace fnd::filesystem
