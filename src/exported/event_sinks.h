#pragma once

#include <cstdint>
#include <vector>

#include "tvx/exported/object_faces.h"
#include "tvx/library/members/member_table.h"

namespace tvx::exported {

/// The host's sinks at one control.
class EventSinks {
 public:
  /// The number of the connection.
  std::uint32_t add(tvx_dispatch* sink);
  /// False: there is none of that number.
  bool remove(std::uint32_t connection);
  void clear();
  /// Tells every sink; `arguments` come back as the last one has left them. What a sink writes that isn't of
  /// the argument's type, nor can be converted to it, counts for nothing.
  void tell(const library::EventMember& event, library::Values& arguments);

 private:
  struct Connection {
    std::uint32_t number;
    Held<tvx_dispatch> sink;
  };
  bool is_connected(std::uint32_t number) const;

  std::vector<Connection> connections_;
  std::uint32_t last_number_ = 0;
};

}  // namespace tvx::exported
