#pragma once
// What a view or a sheet that changed a repository calls: it names what it changed and
// the repository reads that again. The repository controller answers it.
#include "Models/Subdomain.h"

class RefreshProtocol {
 public:
  virtual void refreshRepository(Subdomain changed) = 0;

 protected:
  ~RefreshProtocol() = default;
};
