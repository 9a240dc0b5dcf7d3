#pragma once

#include <cstddef>
#include <functional>

namespace tvx {

/// Memory for objects that are made by the hundred thousand, the nodes of documents: without a header before
/// each, in the order in which they are made, and given back to the system when a stretch of them has gone.
/// One thread only, as all of a document.
class SmallObjects {
 public:
  static constexpr std::size_t largest = 128;

  /// Aligned for anything that needs no more than a pointer does. `size` is at most `largest`.
  static void* take(std::size_t size);
  /// `size` is that with which the object was taken.
  static void give_back(void* object, std::size_t size);

  /// Whether each is an allocation by itself, as the address sanitizer needs it to see who touches one that
  /// has gone. held() knows nothing of them then.
  static bool each_by_itself();

  /// Bytes that the system has given for them and can't take back: those in use, and what is kept for those
  /// to come.
  static std::size_t held();
};

/// Lives while a large number of small objects is made, and says which part of them has been. Where far more
/// are to come than one large page of memory holds, they are put into such pages: the system gives one at
/// once that it otherwise gives in 512 pieces, which takes longer than to make what stands in them.
class SmallObjectsToCome {
 public:
  /// `part_made` is 0 at the start and 1 at the end.
  explicit SmallObjectsToCome(std::function<double()> part_made);
  ~SmallObjectsToCome();
  SmallObjectsToCome(const SmallObjectsToCome&) = delete;
  SmallObjectsToCome& operator=(const SmallObjectsToCome&) = delete;

  /// In bytes; of `made_by_now` the store's count of all that it has ever made.
  double to_come(std::size_t made_by_now) const;

 private:
  std::function<double()> part_made_;
  std::size_t made_before_;
  SmallObjectsToCome* outer_;
};

}  // namespace tvx
