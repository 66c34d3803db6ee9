// Counted references: RefCounted is the base of what values share, Ref<T> the handle.
//
// Counts are plain while an object belongs to one page and atomic from share() on. share() is
// called by the owning thread before another thread can see the object (when it is stored in the
// application, a session or a cache); a shared object is never changed in place by its users.
#ifndef RK_VALUE_REF_H_
#define RK_VALUE_REF_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace rk {

class RefCounted {
 public:
  RefCounted(const RefCounted&) = delete;
  RefCounted& operator=(const RefCounted&) = delete;

  void retain() const noexcept {
    // OPTIMIZATION: an unshared count is seen by one thread only, so it needs no locked
    // instruction.
    if (shared_) {
      refs_.fetch_add(1, std::memory_order_relaxed);
    } else {
      refs_.store(refs_.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }
  }

  void release() const noexcept {
    if (shared_) {
      if (refs_.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    } else {
      const std::uint32_t left = refs_.load(std::memory_order_relaxed) - 1;
      refs_.store(left, std::memory_order_relaxed);
      if (left != 0) return;
    }
    const_cast<RefCounted*>(this)->last_reference_gone();
  }

  bool unique() const noexcept { return !shared_ && refs_.load(std::memory_order_relaxed) == 1; }
  std::uint32_t references() const noexcept { return refs_.load(std::memory_order_relaxed); }
  bool shared() const noexcept { return shared_; }

  // Called before other threads can reach the object; for good.
  void share() const noexcept {
    if (!shared_) shared_ = true;
  }

 protected:
  RefCounted() = default;
  virtual ~RefCounted() = default;

  // Overridden by classes that run script when they go (Class_Terminate); those retain before.
  virtual void last_reference_gone() noexcept { delete this; }

 private:
  mutable std::atomic<std::uint32_t> refs_{0};
  mutable bool shared_ = false;
};

template <class T>
class Ref {
 public:
  Ref() noexcept = default;
  Ref(std::nullptr_t) noexcept {}  // NOLINT(google-explicit-constructor): an empty handle
  explicit Ref(T* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->retain();
  }
  Ref(const Ref& other) noexcept : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  Ref(const Ref<U>& other) noexcept  // NOLINT(google-explicit-constructor): derived to base
      : Ref(other.get()) {}
  ~Ref() {
    if (object_ != nullptr) object_->release();
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  // Takes over a reference that was counted already, and gives one up uncounted.
  static Ref adopt(T* counted) noexcept {
    Ref ref;
    ref.object_ = counted;
    return ref;
  }
  T* detach() noexcept { return std::exchange(object_, nullptr); }

  T* get() const noexcept { return object_; }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.object_ == b.object_; }

 private:
  T* object_ = nullptr;
};

template <class T, class... Args>
Ref<T> make_ref(Args&&... args) {
  return Ref<T>(new T(std::forward<Args>(args)...));
}

}  // namespace rk

#endif  // RK_VALUE_REF_H_
