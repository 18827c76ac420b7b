// Declarations that Visual Studio has, and Wine or this version of libc++ lacks. Included before each source.
#pragma once
#include <io.h>
#include <locale.h>
#include <stdlib.h>

#undef open // a function in Visual Studio
#define MB_CUR_MAX 4
struct timespec {
    long long tv_sec;
    long tv_nsec;
};
extern "C" {
double nan(char const *);
int _islower_l(int, _locale_t);
int _isupper_l(int, _locale_t);
double _strtod_l(char const *, char **, _locale_t);
float _strtof_l(char const *, char **, _locale_t);
}

#include <thread>
namespace std {
struct jthread : thread {
    using thread::thread;
    jthread(jthread &&) = default;
    ~jthread() { join(); }
};
}
