#include "logging/CCgParm.h"

CCgParm CCgParm::ofBoolean(bool value)
{
    return {CCG_BOOLEAN, value ? 1 : 0, 0, {}};
}

CCgParm CCgParm::ofInt32(std::int32_t value)
{
    return {CCG_INT32, value, 0, {}};
}

CCgParm CCgParm::ofLong(std::int64_t value)
{
    return {CCG_LONG, value, 0, {}};
}

CCgParm CCgParm::ofFloat(float value)
{
    return {CCG_FLOAT, 0, static_cast<double>(value), {}};
}

CCgParm CCgParm::ofDouble(double value)
{
    return {CCG_DOUBLE, 0, value, {}};
}

CCgParm CCgParm::ofChar(char value)
{
    return {CCG_CHAR, value, 0, {}};
}

CCgParm CCgParm::ofText(char const* value)
{
    return {CCG_TEXT, 0, 0, value ? value : "(null)"};
}
