#pragma once

#include "kernel_object.h"

namespace native {

// An open file, one end of a pipe, or named shared memory.
class File final : public KernelObject {
public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    ~File() override;

    int Descriptor() const { return descriptor_; }
    std::uint64_t Size() const;

private:
    const int descriptor_;
};

}  // namespace native
