#pragma once

namespace msgcore {

// Base of the message classes.
class BaseMsgID {
  public:
    virtual ~BaseMsgID();
};

} // namespace msgcore
