#pragma once

/// Exports a symbol from the shared library; symbols without it have hidden visibility.
#define ORMIX_SERIALIZATION_API __attribute__((visibility("default")))
