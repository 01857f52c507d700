// Watch: a pointer to an object that may be destroyed by the very call it is used around.
//
//   const Watch watch(element);
//   element->HandleButtonUp(x, y, keys, button);
//   if (!watch) return;
#pragma once

#include <memory>

namespace viewkit {

// The life of an object, as others watch it. A member of the object; not copied with it.
class LifeMark {
public:
    LifeMark() : mark_(std::make_shared<char>()) {}
    // A copy marks a life of its own, and an assignment changes neither.
    LifeMark(const LifeMark&) : LifeMark() {}
    LifeMark& operator=(const LifeMark&) { return *this; }

    // Expires when the mark is destroyed.
    [[nodiscard]] std::weak_ptr<const void> Get() const { return mark_; }

private:
    std::shared_ptr<const void> mark_;
};

// A pointer that is null once its object is gone. `T` has a `GetLife()` that answers the weak
// pointer of its mark.
template <class T>
class Watch {
public:
    Watch() = default;
    // A null object counts as gone.
    explicit Watch(T* object) : object_(object) {
        if (object != nullptr) life_ = object->GetLife();
    }

    // The object, and whether it is still there.
    [[nodiscard]] T* get() const { return life_.expired() ? nullptr : object_; }
    explicit operator bool() const { return get() != nullptr; }

private:
    T* object_ = nullptr;
    std::weak_ptr<const void> life_;
};

}  // namespace viewkit
