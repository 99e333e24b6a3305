#pragma once

/// Marks what the library shows to others; everything else stays hidden.
#define ORMIX_GEOMETRY_API __attribute__((visibility("default")))
