#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace tavrin::base {

// A list that only grows, in chunks that it shares with the lists that follow it. So a follower
// takes over a million elements by copying four thousand pointers.
//
// Only the followed list may be appended to. That writes behind the elements that its followers
// know, so they can be read on another thread meanwhile. Following and growing need a common lock.
template <typename T>
class ChunkedList {
public:
    static constexpr std::size_t kChunkSize = 256;

    ChunkedList() = default;
    ChunkedList(ChunkedList&& other) noexcept
        : chunks_(std::move(other.chunks_)), size_(std::exchange(other.size_, 0)) {}
    ChunkedList& operator=(ChunkedList&& other) noexcept {
        chunks_ = std::move(other.chunks_);
        size_ = std::exchange(other.size_, 0);
        return *this;
    }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    const T& operator[](std::size_t index) const {
        return chunks_[index / kChunkSize].get()[index % kChunkSize];
    }

    // The elements from `first` to the end of its chunk.
    std::span<const T> ChunkFrom(std::size_t first) const {
        const std::size_t offset = first % kChunkSize;
        return {chunks_[first / kChunkSize].get() + offset,
                std::min(kChunkSize - offset, size_ - first)};
    }

    // Makes room for `count` more elements. On std::bad_alloc no element changes.
    void ReserveMore(std::size_t count) {
        while (chunks_.size() * kChunkSize < size_ + count) {
            chunks_.push_back(std::make_shared<T[]>(kChunkSize));
        }
    }

    // Appends an element. Needs reserved room.
    void Append(T element) {
        chunks_[size_ / kChunkSize].get()[size_ % kChunkSize] = std::move(element);
        ++size_;
    }

    // Takes over what `other` has in addition. This list must be empty or have followed `other`
    // before. On std::bad_alloc nothing changes.
    void Follow(const ChunkedList& other) {
        chunks_.insert(chunks_.end(),
                       other.chunks_.begin() + static_cast<std::ptrdiff_t>(chunks_.size()),
                       other.chunks_.end());
        size_ = other.size_;
    }

private:
    std::vector<std::shared_ptr<T[]>> chunks_;
    std::size_t size_ = 0;
};

}  // namespace tavrin::base
