#include "tvx/base/small_objects.h"

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define TVX_OBJECTS_BY_THEMSELVES 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer)
#define TVX_OBJECTS_BY_THEMSELVES 1
#endif
#endif

namespace tvx {
namespace {

constexpr std::size_t unit = 8;
constexpr std::size_t size_count = SmallObjects::largest / unit + 1;
constexpr std::size_t region_size = std::size_t(2) << 20;  // a large page of memory
constexpr std::size_t stretch = std::size_t(64) << 10;     // after each the store asks what is to come
constexpr std::size_t warm_spares = 4, most_spares = 32;   // the others are the system's when it wants them

struct Gone {
  Gone* next;
};

/// As long as a large page, and at a multiple of that: so an object's address leads to its region.
struct Region {
  struct Vacancies {
    Gone* first = nullptr;
    Region *previous = nullptr, *next = nullptr;  // regions that have some of that size, too
  };

  std::size_t used = 0;  // in bytes from its start; what follows was never handed out
  std::size_t objects = 0;
  bool in_large_pages = false;
  std::array<Vacancies, size_count> vacancies;
};
constexpr std::size_t header = (sizeof(Region) + 63) / 64 * 64;

/// The memory of a region that has nothing in it; what stands there may be gone.
struct Spare {
  void* memory;
  bool in_large_pages;
};

class Store {
 public:
  void* take(std::size_t number) {
    if (Region* region = vacant_[number]) return take_vacancy(*region, number);
    const std::size_t size = number * unit;
    if (!current_ || current_->used + size > limit_) go_on(size);
    void* object = reinterpret_cast<char*>(current_) + current_->used;
    current_->used += size;
    ++current_->objects;
    return object;
  }

  void give_back(void* object, std::size_t number) {
    auto& region = *reinterpret_cast<Region*>(reinterpret_cast<std::uintptr_t>(object) & ~(region_size - 1));
    if (--region.objects == 0) return empty(region);
    Region::Vacancies& vacancies = region.vacancies[number];
    if (!vacancies.first) list(region, number);
    vacancies.first = new (object) Gone{vacancies.first};
  }

  std::size_t held() const {
    std::size_t bytes = std::min(spares_.size(), warm_spares) * region_size;
    for (const Region* region : regions_) bytes += region->in_large_pages ? region_size : region->used;
    return bytes;
  }
  std::size_t made() const { return made_; }

  SmallObjectsToCome* coming = nullptr;

 private:
  void* take_vacancy(Region& region, std::size_t number) {
    Region::Vacancies& vacancies = region.vacancies[number];
    Gone* object = vacancies.first;
    vacancies.first = object->next;
    if (!vacancies.first) unlist(region, number);
    ++region.objects;
    return object;
  }

  // The next stretch of the region in use, or another region.
  void go_on(std::size_t size) {
    if (current_) made_ += current_->used - std::exchange(counted_, current_->used);
    const bool more_than_a_region = coming && coming->to_come(made_) >= double(region_size);
    if (current_ && !current_->in_large_pages && more_than_a_region) {
      if (current_->used + stretch <= region_size) waiting_ = current_;
      enter(another(true));
    } else if (!current_ || current_->used + size > region_size) {
      Region* waiting = more_than_a_region ? nullptr : std::exchange(waiting_, nullptr);
      enter(waiting ? *waiting : another(more_than_a_region));
    } else {
      limit_ = std::min(limit_ + stretch, region_size);
    }
  }

  void enter(Region& region) {
    current_ = &region;
    counted_ = region.used;
    limit_ =
        region.in_large_pages ? region_size : std::min((region.used / stretch + 1) * stretch, region_size);
  }

  Region& another(bool in_large_pages) {
    if (spares_.empty()) return add(make(in_large_pages), in_large_pages);
    const Spare spare = spares_.back();
    spares_.pop_back();
    return add(spare.memory, spare.in_large_pages);
  }

  Region& add(void* memory, bool in_large_pages) {
    auto* region = new (memory) Region;
    region->used = header;
    region->in_large_pages = in_large_pages;
    regions_.push_back(region);
    return *region;
  }

  static void* make(bool in_large_pages) {
    constexpr int kind = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    void* const mapped = mmap(nullptr, 2 * region_size, PROT_READ | PROT_WRITE, kind, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc();
    char* const from = static_cast<char*>(mapped);
    const std::size_t before =
        (region_size - reinterpret_cast<std::uintptr_t>(from) % region_size) % region_size;
    if (before > 0) munmap(from, before);
    munmap(from + before + region_size, region_size - before);
    if (in_large_pages) madvise(from + before, region_size, MADV_HUGEPAGE);
    return from + before;
  }

  void empty(Region& region) {
    for (std::size_t number = 0; number < size_count; ++number) {
      if (!region.vacancies[number].first) continue;
      region.vacancies[number].first = nullptr;
      unlist(region, number);
    }
    region.used = header;
    if (&region == current_) return enter(region);
    if (&region == waiting_) return;
    std::erase(regions_, &region);
    if (spares_.size() == most_spares) {
      munmap(&region, region_size);
      return;
    }
    spares_.push_back({&region, region.in_large_pages});
    // What comes next may want as much again, and finds it as it was if the system hasn't taken it meanwhile.
    if (spares_.size() > warm_spares) madvise(&region, region_size, MADV_FREE);
  }

  void list(Region& region, std::size_t number) {
    Region*& first = vacant_[number];
    region.vacancies[number].previous = nullptr;
    region.vacancies[number].next = first;
    if (first) first->vacancies[number].previous = &region;
    first = &region;
  }

  void unlist(Region& region, std::size_t number) {
    const auto [none, previous, next] = region.vacancies[number];
    (previous ? previous->vacancies[number].next : vacant_[number]) = next;
    if (next) next->vacancies[number].previous = previous;
  }

  Region* current_ = nullptr;
  std::size_t limit_ = 0;      // of the current region: where go_on() is asked
  std::size_t counted_ = 0;    // of the current region: as far as made_ knows
  Region* waiting_ = nullptr;  // has room, and is gone on with after the large pages
  std::array<Region*, size_count> vacant_{};
  std::vector<Region*> regions_;
  std::vector<Spare> spares_;
  std::size_t made_ = 0;
};

// Never destroyed: what static objects hold may be the last to go.
Store& store() {
  static Store& store = *new Store;
  return store;
}

}  // namespace

#ifdef TVX_OBJECTS_BY_THEMSELVES
void* SmallObjects::take(std::size_t size) { return ::operator new(size); }
void SmallObjects::give_back(void* object, std::size_t) { ::operator delete(object); }
bool SmallObjects::each_by_itself() { return true; }
#else
void* SmallObjects::take(std::size_t size) {
  assert(size <= largest);
  return store().take((size + unit - 1) / unit);
}
void SmallObjects::give_back(void* object, std::size_t size) {
  store().give_back(object, (size + unit - 1) / unit);
}
bool SmallObjects::each_by_itself() { return false; }
#endif

std::size_t SmallObjects::held() { return store().held(); }

SmallObjectsToCome::SmallObjectsToCome(std::function<double()> part_made)
    : part_made_(std::move(part_made)),
      made_before_(store().made()),
      outer_(std::exchange(store().coming, this)) {}

SmallObjectsToCome::~SmallObjectsToCome() { store().coming = outer_; }

double SmallObjectsToCome::to_come(std::size_t made_by_now) const {
  const double part = part_made_();
  return part <= 0 ? 0 : static_cast<double>(made_by_now - made_before_) * (1 - part) / part;
}

}  // namespace tvx
