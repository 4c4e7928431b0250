// Callables that a library hands to the host, which keeps clones of them.
#pragma once

namespace NXOpen {

class BaseCallback {
 public:
    virtual ~BaseCallback() = default;
    virtual BaseCallback* Clone() const = 0;
};

template <class R>
class Callback0 : public BaseCallback {
 public:
    virtual R operator()() const = 0;
};

template <class R, class A1>
class Callback1 : public BaseCallback {
 public:
    virtual R operator()(A1 argument) const = 0;
};

template <class R>
class Callback0Function : public Callback0<R> {
 public:
    explicit Callback0Function(R (*function)()) : function_(function) {}
    R operator()() const override { return function_(); }
    Callback0Function* Clone() const override { return new Callback0Function(*this); }

 private:
    R (*function_)();
};

template <class T, class R>
class Callback0MemberFunction : public Callback0<R> {
 public:
    Callback0MemberFunction(T* object, R (T::*function)()) : object_(object), function_(function) {}
    R operator()() const override { return (object_->*function_)(); }
    Callback0MemberFunction* Clone() const override { return new Callback0MemberFunction(*this); }

 private:
    T* object_;
    R (T::*function_)();
};

template <class R, class A1>
class Callback1Function : public Callback1<R, A1> {
 public:
    explicit Callback1Function(R (*function)(A1)) : function_(function) {}
    R operator()(A1 argument) const override { return function_(argument); }
    Callback1Function* Clone() const override { return new Callback1Function(*this); }

 private:
    R (*function_)(A1);
};

template <class T, class R, class A1>
class Callback1MemberFunction : public Callback1<R, A1> {
 public:
    Callback1MemberFunction(T* object, R (T::*function)(A1)) : object_(object), function_(function) {}
    R operator()(A1 argument) const override { return (object_->*function_)(argument); }
    Callback1MemberFunction* Clone() const override { return new Callback1MemberFunction(*this); }

 private:
    T* object_;
    R (T::*function_)(A1);
};

template <class R>
Callback0Function<R> make_callback(R (*function)()) {
    return Callback0Function<R>(function);
}

template <class T, class R>
Callback0MemberFunction<T, R> make_callback(T* object, R (T::*function)()) {
    return Callback0MemberFunction<T, R>(object, function);
}

template <class R, class A1>
Callback1Function<R, A1> make_callback(R (*function)(A1)) {
    return Callback1Function<R, A1>(function);
}

template <class T, class R, class A1>
Callback1MemberFunction<T, R, A1> make_callback(T* object, R (T::*function)(A1)) {
    return Callback1MemberFunction<T, R, A1>(object, function);
}

}  // namespace NXOpen
