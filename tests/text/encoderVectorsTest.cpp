// base64 and URL forms against a table that another language's library made; see makeEncoderVectors.py.
#include "text/base64.h"
#include "text/escapes.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

enum class Kind { base64, url };

struct Vector {
    Kind kind;
    int plainLength;
    char const* plain;
    int codeLength;
    char const* code;

    std::string plainBytes() const { return std::string(plain, std::size_t(plainLength)); }
    std::string codeBytes() const { return std::string(code, std::size_t(codeLength)); }
};

constexpr Vector vectors[] = {
#include "tests/text/encoderVectors.inc"
};

TEST(EncoderVectors, areBase64InBothDirections)
{
    for (Vector const& vector : vectors) {
        if (vector.kind != Kind::base64)
            continue;
        std::istringstream plain(vector.plainBytes()), code(vector.codeBytes());
        std::ostringstream encoded, decoded;

        base64::encoder().encode(plain, encoded);
        base64::decoder().decode(code, decoded);

        EXPECT_EQ(encoded.str(), vector.codeBytes());
        EXPECT_EQ(decoded.str(), vector.plainBytes());
    }
}

TEST(EncoderVectors, areUrlsInBothDirections)
{
    for (Vector const& vector : vectors) {
        if (vector.kind != Kind::url)
            continue;
        CString plain(vector.plain, vector.plainLength);
        CString code(vector.code, vector.codeLength);

        omEncodeUrl(plain);
        omDecodeUrl(code);

        EXPECT_EQ(plain.view(), vector.codeBytes());
        EXPECT_EQ(code.view(), vector.plainBytes());
    }
}

TEST(EncoderVectors, areManyOfEachKind)
{
    int counts[2] = {};
    for (Vector const& vector : vectors)
        ++counts[int(vector.kind)];

    EXPECT_GE(counts[int(Kind::base64)], 19);
    EXPECT_GE(counts[int(Kind::url)], 24);
}

}  // namespace
