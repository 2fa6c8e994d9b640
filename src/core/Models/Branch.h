#pragma once
#include "Models/Reference.h"

// Base of local and remote branches.
class Branch : public Reference {
 public:
  using Reference::Reference;
};
