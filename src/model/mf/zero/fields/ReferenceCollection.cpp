#include "mf/zero/fields/ReferenceCollection.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <utility>

#include "mf/zero/fields/RowList.h"

namespace mf::zero {
namespace {

constexpr std::uint8_t kFirstCapacityLog = 3;
constexpr std::uint8_t kLastCapacityLog = 31;  // the size is counted in 32 bits

}  // namespace

ReferenceCollection::~ReferenceCollection() {
  clear();
}

void ReferenceCollection::setRows(const RowList& rows) const noexcept {
  rows_ = &rows;
  size_ = static_cast<std::uint32_t>(rows.size);
  capacityLog_ = kRows;
}

void ReferenceCollection::clear() const noexcept {
  if (!isRun() && rows() == nullptr) {
    delete[] places_;
  }
  first_ = nullptr;
  size_ = 0;
  capacityLog_ = 0;
}

bool ReferenceCollection::holds(const ElementImpl& element,
                                std::size_t elementBytes) const noexcept {
  if (isRun()) {
    // Only elements of the run lie between its ends.
    const std::less<const ElementImpl*> before;
    return size_ != 0 && !before(&element, first_) && before(&element, &runAt(size_, elementBytes));
  }
  return std::find(places_, places_ + size_, &element) != places_ + size_;
}

void ReferenceCollection::reserve(std::size_t count) {
  if (!isRun() && rows() == nullptr && count > std::size_t{1} << capacityLog_) {
    makePlaces(count, 0);
  }
}

void ReferenceCollection::replace(std::size_t index, ElementImpl& element) const noexcept {
  element.references_.add();
  // The handle takes over the reference of the place, and drops it.
  ModelElement replaced;
  replaced.impl_ = std::exchange(places_[index], &element);
}

void ReferenceCollection::makePlaces(std::size_t count, std::size_t elementBytes) const {
  std::uint8_t capacityLog = std::max<std::uint8_t>(kFirstCapacityLog, capacityLog_);
  while (std::size_t{1} << capacityLog < count) {
    if (capacityLog == kLastCapacityLog) {
      throw std::bad_alloc();
    }
    ++capacityLog;
  }
  auto places = std::make_unique<ElementImpl*[]>(std::size_t{1} << capacityLog);
  for (std::size_t index = 0; index != size_; ++index) {
    places[index] = &at(index, elementBytes);
  }
  if (!isRun()) {
    delete[] places_;
  }
  places_ = places.release();
  capacityLog_ = capacityLog;
}

}  // namespace mf::zero
