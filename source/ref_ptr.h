#pragma once
#include <utility>

// Holds one reference on a counted object, or null. A raw pointer that is given to it brings its reference along;
// hold() takes a new one. A copy takes a reference of its own. A move takes the other's, which is null then.
//
// A factory gives a reference; an operation gives back the object itself, without one:
//
//     RefPtr rows(generator->GenerateSet("[Store].MEMBERS"));
//     rows->TakeTail();                                         // right
//     RefPtr tail(rows->TakeTail());                            // wrong: two holders of one reference
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
    ~RefPtr()
    {
        if (fObject != nullptr)
            fObject->unuse();
    }

    RefPtr & operator=(RefPtr const & other)
    {
        if (this == &other)
            return *this;
        *this = other.fObject;
        if (fObject != nullptr)
            fObject->use();
        return *this;
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

// A holder with a reference of its own on `object`, which may be null.
template <class Object>
RefPtr<Object> hold(Object * object)
{
    if (object != nullptr)
        object->use();
    return RefPtr<Object>(object);
}
