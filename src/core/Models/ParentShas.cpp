#include "Models/ParentShas.h"

#include <algorithm>

ParentShas::ParentShas(std::span<const Sha> shas) : count_(static_cast<uint32_t>(shas.size())) {
  if (count_ == 1) {
    first_ = shas[0];
  } else if (count_ > 1) {
    more_.reset(new Sha[count_]);
    std::copy(shas.begin(), shas.end(), more_.get());
  }
}

ParentShas& ParentShas::operator=(const ParentShas& other) {
  if (this != &other) *this = ParentShas(other.span());
  return *this;
}

bool ParentShas::operator==(const ParentShas& other) const {
  const auto a = span();
  const auto b = other.span();
  return std::equal(a.begin(), a.end(), b.begin(), b.end());
}
