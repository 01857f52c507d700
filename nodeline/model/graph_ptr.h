// Counted handles: `graph_ptr` counts inside the object, `graph_ptr2` beside it.
//
// `graph_ptr<T>` is for what the model itself owns (records, visual records, sets); its pointee
// derives from `Countable`. `graph_ptr2<T>` is for what callers hand to the library and may own
// themselves (graphs, layouts, handlers):
//
//   graph_ptr2<Graph> graph(new Graph(), true);   // deleted with its last handle
//   MyLayout layout;
//   graph->SetDefaultLayout(graph_ptr2<ILayout>(&layout, false));   // stays ours
//
// Counts are plain integers: all handles of one graph are used from one thread at a time.
#pragma once

#include <corvex/export.h>

#include <type_traits>
#include <typeinfo>
#include <utility>

namespace nodeline {

// An object that counts the handles on it. The count starts at 0, so a new object is uncounted
// until the first `graph_ptr` takes it. A copy starts with a count of its own.
class NODELINE_API Countable {
public:
    Countable() = default;
    // A count belongs to the object, not to its value: nothing is copied.
    Countable(const Countable&) noexcept {}
    Countable& operator=(const Countable&) noexcept { return *this; }
    virtual ~Countable() = 0;

    // The number of handles on this object; 0 for a value on the stack.
    [[nodiscard]] int GetRefCount() const noexcept { return count_; }

private:
    template <class T>
    friend class graph_ptr;
    template <class T>
    friend class graph_ptr2;

    // Out of line, so that every release of a handle is a few instructions.
    void delete_this() const noexcept;

    mutable int count_ = 0;
};

// The count that the copies of one `graph_ptr2` share.
class NODELINE_API Counter : public Countable {
public:
    Counter() = default;
    ~Counter() override;
};

// An intrusive counted pointer, possibly null. The last handle deletes the object. Never give it
// an object on the stack, such as a `NodeSet` value.
template <class T>
class graph_ptr {
public:
    graph_ptr() noexcept = default;

    // Implicit on purpose: a fresh record is handed over as `graph_ptr<INodeImpl>(new ...)` or
    // null.
    graph_ptr(T* object) noexcept : object_(object) { acquire(); }

    // A copy counts as well; a move takes the count over and leaves `other` null.
    graph_ptr(const graph_ptr& other) noexcept : object_(other.object_) { acquire(); }
    graph_ptr(graph_ptr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    // Shares the object of a handle on a derived type.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    graph_ptr(const graph_ptr<U>& other) noexcept : object_(other.get()) {
        acquire();
    }

    ~graph_ptr() { release(object_); }

    // As above. The former object is let go of once the new one is held.
    graph_ptr& operator=(const graph_ptr& other) noexcept {
        if (object_ != other.object_) {
            T* old = std::exchange(object_, other.object_);
            acquire();
            release(old);
        }
        return *this;
    }
    graph_ptr& operator=(graph_ptr&& other) noexcept {
        if (this != &other) {
            T* old = std::exchange(object_, std::exchange(other.object_, nullptr));
            release(old);
        }
        return *this;
    }

    // The object. A null handle must not be dereferenced.
    [[nodiscard]] T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

private:
    void acquire() const noexcept {
        if (object_ != nullptr) ++static_cast<const Countable*>(object_)->count_;
    }
    static void release(T* object) noexcept {
        if (object == nullptr) return;
        const Countable* counted = object;
        if (--counted->count_ == 0) counted->delete_this();
    }

    T* object_ = nullptr;
};

// A counted pointer whose count stands beside the object. `owns` says whether the last handle
// deletes the object; it travels with every copy. Two handles made separately from one raw
// pointer know nothing of each other.
template <class T>
class graph_ptr2 {
public:
    graph_ptr2() noexcept = default;
    // The first handle on `object`; empty if that is null. If this throws, for want of memory, an
    // object that was to be owned is deleted.
    graph_ptr2(T* object, bool owns)
        : counter_(make_counter(object, owns)), pointee_(object), owns_(owns) {}

    // Shares count, object and `owns`.
    graph_ptr2(const graph_ptr2& other) noexcept
        : counter_(other.counter_), pointee_(other.pointee_), owns_(other.owns_) {
        if (counter_ != nullptr) ++counter_->count_;
    }

    // The same with a handle on a derived type.
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    graph_ptr2(const graph_ptr2<U>& other) noexcept
        : counter_(other.counter_), pointee_(other.pointee_), owns_(other.owns_) {
        if (counter_ != nullptr) ++counter_->count_;
    }

    ~graph_ptr2() { reset(); }

    // Lets go of the former object and shares the other one.
    graph_ptr2& operator=(const graph_ptr2& other) {
        if (this == &other) return *this;
        // `other` may lie in the very object that this handle lets go of.
        graph_ptr2 taken(other);
        reset();
        counter_ = std::exchange(taken.counter_, nullptr);
        pointee_ = std::exchange(taken.pointee_, nullptr);
        owns_ = taken.owns_;
        return *this;
    }

    // Lets go of the object, and deletes it if this was the last handle and `owns` is set. The
    // object dies before its counter.
    void reset() {
        if (counter_ != nullptr) {
            if (owns_ && counter_->count_ == 1 && pointee_ != nullptr) delete pointee_;
            if (--counter_->count_ == 0) delete counter_;
        }
        pointee_ = nullptr;
        counter_ = nullptr;
    }

    // The object. An empty handle must not be dereferenced.
    [[nodiscard]] T* get() const noexcept { return pointee_; }
    T* operator->() const noexcept { return pointee_; }
    T& operator*() const noexcept { return *pointee_; }
    explicit operator bool() const noexcept { return pointee_ != nullptr; }

    // Whether the last handle deletes the object.
    [[nodiscard]] bool owns() const noexcept { return owns_; }
    // The number of handles that share the count; 0 for an empty handle.
    [[nodiscard]] int GetRefCount() const noexcept {
        return counter_ == nullptr ? 0 : counter_->count_;
    }

private:
    template <class U>
    friend class graph_ptr2;

    static Counter* make_counter(T* object, bool owns) {
        if (object == nullptr) return nullptr;
        Counter* counter = nullptr;
        try {
            counter = new Counter;
        } catch (...) {
            if (owns) delete object;
            throw;
        }
        ++counter->count_;
        return counter;
    }

    Counter* counter_ = nullptr;
    T* pointee_ = nullptr;
    bool owns_ = true;
};

// Hands out a fresh object under its interface; an empty handle raises `std::bad_cast`.
template <class Base, class Derived>
graph_ptr2<Base> checked_upcast(const graph_ptr2<Derived>& handle) {
    if (!handle) throw std::bad_cast();
    return graph_ptr2<Base>(handle);
}

}  // namespace nodeline
