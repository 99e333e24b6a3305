#pragma once

// What an archive makes of an object: the copy has gone through `write` and `read` only.

#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <gtest/gtest.h>

#include <sstream>

namespace ormix {

template <class X>
X archivedCopy(const X& object) {
  std::stringstream stream;
  CborOArchive out(stream);
  EXPECT_TRUE(object.write(out));
  EXPECT_TRUE(out.close());
  CborIArchive in(stream);
  X copy;
  const BoolResult result = copy.read(in);
  EXPECT_TRUE(result) << result.getMessage();
  return copy;
}

}  // namespace ormix
