// The drive families by model index, and what each needs to be read: the one place that knows a model's constants.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/host_api.h"

namespace pelix {

inline constexpr std::size_t kModelRows = 54;

// One row; the fields stand in this order, each in a host word.
struct ModelRow {
  HostWord model_index;     // 11 to 64
  HostWord generation;      // 2 for indexes 58 to 64, else 1
  const char* family_name;  // 11 characters, padded with blanks
  HostWord model_value_1;
  HostWord servo_wedge_address;  // drive variable, 0: none
  HostWord servo_wedges;         // per revolution
  HostWord model_value_2;
  HostWord spindle_speed;  // revolutions per minute
  HostWord model_value_3;
  HostWord model_value_4;
  HostWord model_value_5;
  const char* prefixes;  // of firmware codes, each two or three characters and a blank
};
static_assert(sizeof(ModelRow) == 12 * sizeof(HostWord));

// By falling model index from 64 to 11, except that 36 stands before 37. Searched in this order.
extern const std::array<ModelRow, kModelRows> kModelTable;

}  // namespace pelix
