// A process-wide single object: there from Make to Drop, which start-up and shut-down call in their written order.
// Nothing happens before main or after it, so a library may hold one and be loaded and unloaded at will.
#pragma once

#include <memory>
#include <utility>

namespace platform {

template <class T>
class ProcessWide {
 public:
  template <class... Arguments>
  T& Make(Arguments&&... arguments) {
    Drop();
    object_ = std::make_unique<T>(std::forward<Arguments>(arguments)...).release();
    return *object_;
  }
  void Drop() { std::unique_ptr<T>(std::exchange(object_, nullptr)).reset(); }

  explicit operator bool() const { return object_ != nullptr; }
  T& operator*() const { return *object_; }
  T* operator->() const { return object_; }

 private:
  T* object_ = nullptr;  // owned from Make to Drop
};

}  // namespace platform
