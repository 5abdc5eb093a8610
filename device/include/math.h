// There is no SDK for the device here: what libc++'s <cmath> requires, and the functions in use.
#pragma once

#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5

#define HUGE_VAL __builtin_huge_val()
#define INFINITY __builtin_inff()
#define NAN __builtin_nanf("")

#ifdef __cplusplus
extern "C" {
#endif

double fabs(double value);
double floor(double value);
double ceil(double value);
double round(double value);
double sqrt(double value);
double pow(double base, double exponent);
double fmod(double value, double divisor);
float fabsf(float value);
float floorf(float value);
float ceilf(float value);
float roundf(float value);
float sqrtf(float value);
float powf(float base, float exponent);
float fmodf(float value, float divisor);

#ifdef __cplusplus
}
#endif
