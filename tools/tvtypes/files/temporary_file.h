/// \file
/// A temporary file that is removed however the process ends, except by SIGKILL.
#pragma once

#include <string>

namespace tvtool::files {

/// Removes the temporary file of this process, if there is one. Safe in a signal handler.
void removeTemporaryFile() noexcept;

/// A new file in a folder, with a short name of its own. The destructor removes it unless rename()
/// has been called. So do the signals that end a process, which then ends by the same signal; a
/// signal that is ignored or handled stays so. A process has one such file at a time.
class TemporaryFile {
  public:
    /// Creates the file for writing. `folder` is an open directory, which must outlive it. Throws a
    /// std::system_error.
    explicit TemporaryFile(int folder);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Returns the file's descriptor, which the caller closes.
    int descriptor() const { return descriptor_; }
    /// Renames the file within the folder, where it replaces a file of that name. Throws a
    /// std::system_error.
    void rename(const std::string& name);

  private:
    int descriptor_ = -1;
};

} // namespace tvtool::files
