#pragma once

#include <utility>

#include "tvx/transfer/ftp_client.h"

namespace tvx::transfer {

/// An operation of the client is under way. A Disconnect that came meanwhile is done at its end.
class clsFTP::Busy {
 public:
  explicit Busy(clsFTP& client) : client_(client) { client_.busy_ = true; }
  ~Busy() {
    client_.busy_ = false;
    if (std::exchange(client_.disconnect_later_, false)) client_.Disconnect();
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  clsFTP& client_;
};

}  // namespace tvx::transfer
