#pragma once

#include <QString>

/// What a check-box cell of a grid holds, and what is stored for it.
namespace CheckState {

inline constexpr QLatin1StringView checked{"1"};
inline constexpr QLatin1StringView unchecked{"2"};

inline QString of(bool on) { return on ? checked : unchecked; }

}  // namespace CheckState
