#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

#include "tvx/exported/module.h"
#include "tvx/tvxhtml.h"

namespace tvx::exported {

inline bool operator==(const tvx_id& a, const tvx_id& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

/// An object that counts its references. What hosts hold are pointers to its faces.
class Counted {
 public:
  Counted() { Module::only().object_made(); }
  virtual ~Counted() { Module::only().object_gone(); }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  /// The face with this identifier; null: the object has none. No reference is added.
  virtual void* face(const tvx_id& id) = 0;

  std::uint32_t add_ref() { return ++references_; }
  std::uint32_t release() {
    const std::uint32_t left = --references_;
    if (left == 0) Module::only().bury(std::shared_ptr<Counted>(this));
    return left;
  }
  tvx_result query(const tvx_id* id, void** object) {
    if (!id || !object) return TVX_POINTER;
    *object = face(*id);
    if (!*object) return TVX_NO_INTERFACE;
    add_ref();
    return TVX_OK;
  }

 private:
  std::atomic<std::uint32_t> references_ = 1;
};

/// One interface of an object.
template <class Interface>
struct Face : Interface {
  template <class Functions>
  Face(const Functions& table, Counted& object) : Interface{&table}, owner(object) {}
  Counted& owner;
};

template <class Owner = Counted, class Interface>
Owner& owner_of(Interface* self) {
  return static_cast<Owner&>(static_cast<Face<Interface>*>(self)->owner);
}

// The three functions with which every table starts.
template <class Interface>
tvx_result query_interface(Interface* self, const tvx_id* id, void** object) {
  return owner_of(self).query(id, object);
}
template <class Interface>
std::uint32_t add_reference(Interface* self) {
  return owner_of(self).add_ref();
}
template <class Interface>
std::uint32_t release_reference(Interface* self) {
  return owner_of(self).release();
}

/// A reference to an object of the host's.
template <class Interface>
class Held {
 public:
  Held() = default;
  explicit Held(Interface* object) : object_(object) {
    if (object_) object_->functions->AddRef(object_);
  }
  Held(const Held& other) : Held(other.object_) {}
  Held(Held&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Held& operator=(Held other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Held() {
    if (object_) object_->functions->Release(object_);
  }
  Interface* get() const { return object_; }
  explicit operator bool() const { return object_; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace tvx::exported
