#pragma once
// The parents of a revision. Nearly every commit has one, held in place; merges put
// all of theirs in one array on the heap.
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>

#include "Models/Sha.h"

class ParentShas {
 public:
  ParentShas() = default;
  explicit ParentShas(const Sha& only) : first_(only), count_(1) {}
  explicit ParentShas(std::span<const Sha> shas);
  ParentShas(std::initializer_list<Sha> shas) : ParentShas(std::span<const Sha>(shas.begin(), shas.size())) {}

  ParentShas(const ParentShas& other) : ParentShas(other.span()) {}
  ParentShas& operator=(const ParentShas& other);
  ParentShas(ParentShas&&) noexcept = default;
  ParentShas& operator=(ParentShas&&) noexcept = default;

  std::span<const Sha> span() const { return count_ > 1 ? std::span<const Sha>(more_.get(), count_) : std::span<const Sha>(&first_, count_); }
  size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  const Sha& operator[](size_t index) const { return span()[index]; }
  const Sha* begin() const { return span().data(); }
  const Sha* end() const { return span().data() + count_; }

  bool operator==(const ParentShas& other) const;

 private:
  Sha first_;
  uint32_t count_ = 0;
  std::unique_ptr<Sha[]> more_;  // all parents, when there are two or more
};
