// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cassert>
#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace tp
{
template <typename Signature, std::size_t Size = 128>
class FixedFunction;

/// A callable held in place: it moves, but never allocates, so that posting a job does not either.
///
/// Any callable of at most Size bytes fits, among them a bound member function; a larger one does
/// not compile. A plain function pointer is stored as it is and has no manager. Move-only. Calling
/// an empty one is a programming error. Not thread-safe.
template <typename Result, typename... Args, std::size_t Size>
class FixedFunction<Result(Args...), Size>
{
public:
    FixedFunction() = default;

    template <typename Callable,
        typename = std::enable_if_t<!std::is_same_v<std::decay_t<Callable>, FixedFunction>>>
    FixedFunction(Callable &&callable)
    {
        using Stored = std::decay_t<Callable>;
        static_assert(sizeof(Stored) <= Size, "the callable does not fit");
        static_assert(alignof(Stored) <= alignof(std::max_align_t), "the callable is over-aligned");
        static_assert(std::is_move_constructible_v<Stored>, "the callable cannot be moved");
        if constexpr (std::is_same_v<Stored, Function>) {
            plainFunction() = callable;
            m_call = plainFunction() ? &callPlain : nullptr;
        } else {
            ::new (static_cast<void *>(m_storage)) Stored(std::forward<Callable>(callable));
            m_call = &callStored<Stored>;
            m_manage = &manage<Stored>;
        }
    }

    FixedFunction(FixedFunction &&other) { take(other); }

    FixedFunction &operator=(FixedFunction &&other)
    {
        if (this != &other) {
            drop();
            take(other);
        }
        return *this;
    }

    FixedFunction(const FixedFunction &) = delete;
    FixedFunction &operator=(const FixedFunction &) = delete;

    ~FixedFunction() { drop(); }

    explicit operator bool() const { return m_call != nullptr; }

    Result operator()(Args... args)
    {
        assert(m_call);
        return m_call(m_storage, std::forward<Args>(args)...);
    }

private:
    using Function = Result (*)(Args...);
    using Call = Result (*)(void *storage, Args &&...args);
    using Manage = void (*)(void *storage, void *source);

    static_assert(Size >= sizeof(Function), "a plain function pointer always fits");

    static Result callPlain(void *storage, Args &&...args)
    {
        return (*static_cast<Function *>(storage))(std::forward<Args>(args)...);
    }

    template <typename Stored>
    static Result callStored(void *storage, Args &&...args)
    {
        return (*std::launder(static_cast<Stored *>(storage)))(std::forward<Args>(args)...);
    }

    // Moves the callable of source into storage, or without a source destroys the one in storage.
    template <typename Stored>
    static void manage(void *storage, void *source)
    {
        if (source)
            ::new (storage) Stored(std::move(*std::launder(static_cast<Stored *>(source))));
        else
            std::launder(static_cast<Stored *>(storage))->~Stored();
    }

    Function &plainFunction() { return *reinterpret_cast<Function *>(m_storage); }

    void drop()
    {
        if (m_manage)
            std::exchange(m_manage, nullptr)(m_storage, nullptr);
        else
            plainFunction() = nullptr;
    }

    // The source keeps its manager, which destroys what the move leaves behind.
    void take(FixedFunction &other)
    {
        m_call = std::exchange(other.m_call, nullptr);
        m_manage = other.m_manage;
        if (m_manage)
            m_manage(m_storage, other.m_storage);
        else
            plainFunction() = other.plainFunction();
    }

    alignas(std::max_align_t) std::byte m_storage[Size] = {};
    Call m_call = nullptr;
    Manage m_manage = nullptr; // null for a plain function pointer, the storage's first word
};
} // namespace tp
