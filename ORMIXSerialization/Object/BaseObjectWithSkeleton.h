#pragma once

#include <ORMIXSerialization/Object/BaseSerializationObject.h>

namespace ormix {

/// Base class of the data objects of all libraries; adds nothing to an archive.
class ORMIX_SERIALIZATION_API BaseObjectWithSkeleton : public BaseSerializationObject {
 public:
  ~BaseObjectWithSkeleton() override;

 protected:
  BaseObjectWithSkeleton() = default;
  BaseObjectWithSkeleton(const BaseObjectWithSkeleton&) = default;
  BaseObjectWithSkeleton(BaseObjectWithSkeleton&&) = default;
  BaseObjectWithSkeleton& operator=(const BaseObjectWithSkeleton&) = default;
  BaseObjectWithSkeleton& operator=(BaseObjectWithSkeleton&&) = default;
};

}  // namespace ormix
