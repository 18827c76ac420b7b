#pragma once
#include <type_traits>
#include <utility>

/// Holds one reference to a counted object, or null.
///
/// The constructor and the assignment from a raw pointer take over a reference that the caller has; hold() takes a
/// new one. A copy takes its own reference. A move leaves the source null.
///
/// A factory returns an object with a reference. An operation returns the object that it was called on, without
/// one:
///
///     RefPtr rows(generator->GenerateSet("[Store].MEMBERS"));
///     rows->TakeTail();                 // right
///     RefPtr tail(rows->TakeTail());    // wrong: two holders share one reference
template <class Object>
class RefPtr {
public:
    RefPtr() noexcept = default;
    explicit RefPtr(Object * object) noexcept : fObject(object) {}
    RefPtr(RefPtr const & other) : fObject(other.fObject)
    {
        if (fObject != nullptr)
            fObject->use();
    }
    RefPtr(RefPtr && other) noexcept : fObject(std::exchange(other.fObject, nullptr)) {}
    /// Converts from a RefPtr<Derived>. Takes another reference to the object.
    template <class Derived, std::enable_if_t<std::is_convertible_v<Derived *, Object *>, int> = 0>
    RefPtr(RefPtr<Derived> const & other) : RefPtr(static_cast<Object *>(other.get()))
    {
        if (fObject != nullptr)
            fObject->use();
    }
    ~RefPtr()
    {
        if (fObject != nullptr)
            fObject->unuse();
    }

    RefPtr & operator=(RefPtr const & other)
    {
        return *this = RefPtr(other); // takes the new reference first: the old object may own `other`
    }
    RefPtr & operator=(RefPtr && other) noexcept
    {
        if (this != &other)
            *this = std::exchange(other.fObject, nullptr);
        return *this;
    }
    RefPtr & operator=(Object * object)
    {
        if (fObject != nullptr)
            fObject->unuse();
        fObject = object;
        return *this;
    }

    Object * get() const noexcept { return fObject; }
    Object * operator->() const noexcept { return fObject; }
    Object & operator*() const noexcept { return *fObject; }
    explicit operator bool() const noexcept { return fObject != nullptr; }

private:
    Object * fObject = nullptr;
};

/// Takes a new reference to `object`, which may be null.
template <class Object>
RefPtr<Object> hold(Object * object)
{
    if (object != nullptr)
        object->use();
    return RefPtr<Object>(object);
}
