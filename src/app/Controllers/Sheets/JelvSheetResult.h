#pragma once
#include <variant>

#include "Git/ResultError.h"

// How a sheet ended; read by whoever opened it.
struct JelvSheetResult {
  struct Success {
    bool operator==(const Success&) const = default;
  };
  struct Cancel {
    bool operator==(const Cancel&) const = default;
  };
  std::variant<Cancel, Success, ResultError> value;

  bool isSuccess() const { return std::holds_alternative<Success>(value); }
  bool isCancel() const { return std::holds_alternative<Cancel>(value); }
  const ResultError* error() const { return std::get_if<ResultError>(&value); }
};
