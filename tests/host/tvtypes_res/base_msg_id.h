#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace msgcore {

// Base of the message classes. A class whose id the host's catalogue lacks overrides text().
class BaseMsgID {
  public:
    virtual ~BaseMsgID();
    virtual std::string text() const;

  protected:
    BaseMsgID(std::string_view id, std::vector<std::string> arguments);
};

} // namespace msgcore
