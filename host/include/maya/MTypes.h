#pragma once

// Release of the API that these declarations follow: year, update, two digits reserved.
#define MAYA_API_VERSION 20240000

#include <cstdint>

typedef std::int64_t MInt64;
typedef std::uint64_t MUint64;

#include <cstddef>

/// An unsigned integer as wide as a pointer.
typedef std::size_t MUintPtrSz;
