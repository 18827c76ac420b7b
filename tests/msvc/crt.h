// What libc++ uses of Visual Studio's C library and Wine does not declare. Included before each source.
#pragma once
#include <locale.h>
#include <stdlib.h>

#define MB_CUR_MAX 4
struct timespec {
    long long tv_sec;
    long tv_nsec;
};
extern "C" {
int _islower_l(int, _locale_t);
int _isupper_l(int, _locale_t);
double _strtod_l(char const *, char **, _locale_t);
float _strtof_l(char const *, char **, _locale_t);
}
