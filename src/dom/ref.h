#pragma once

#include <cstddef>
#include <utility>

namespace tvx::dom {

/// A counted reference to a node; empty or pointing. A node lives while its parent or any Ref holds it.
/// This is the handle that survives: the element may leave the document, the document may go; then
/// Node::document() is null and whoever needs the document calls document_of(), which throws.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  Ref(T* node) : node_(node) { retain(); }
  Ref(T& node) : node_(&node) { retain(); }
  Ref(const Ref& other) : node_(other.node_) { retain(); }
  Ref(Ref&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
  template <class U>
  Ref(const Ref<U>& other) : node_(other.get()) {
    retain();
  }
  ~Ref() { release(); }

  Ref& operator=(Ref other) noexcept {
    std::swap(node_, other.node_);
    return *this;
  }

  T* get() const { return node_; }
  T& operator*() const { return *node_; }
  T* operator->() const { return node_; }
  explicit operator bool() const { return node_ != nullptr; }

  friend bool operator==(const Ref& a, const Ref& b) { return a.node_ == b.node_; }
  friend bool operator==(const Ref& a, const T* b) { return a.node_ == b; }

 private:
  void retain() {
    if (node_) node_->retain();
  }
  void release() {
    if (node_) node_->release();
  }
  T* node_ = nullptr;
};

}  // namespace tvx::dom
