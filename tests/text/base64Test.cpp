#include "text/base64.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

// Encodes in blocks of `block` bytes, with a mark behind each block's room that must stay.
std::string encode(std::string const& plain, std::size_t block)
{
    base64::encoder encoder(16);
    encoder.init();
    std::string code;
    std::vector<char> out(4 * (block / 3 + 2) + block / 54 + 2);
    for (std::size_t at = 0; at < plain.size(); at += block) {
        std::size_t const length = std::min(block, plain.size() - at);
        long const room = long(4 * ((length + 2) / 3) + (length + 53) / 54);
        out[std::size_t(room)] = '!';
        long const written = encoder.encode(plain.data() + at, long(length), out.data());
        EXPECT_LE(written, room);
        EXPECT_EQ(out[std::size_t(room)], '!');
        code.append(out.data(), std::size_t(written));
    }
    code.append(out.data(), std::size_t(encoder.encode_end(out.data())));
    return code;
}

std::string decode(std::string const& code, std::size_t block)
{
    base64::decoder decoder;
    std::string plain;
    std::vector<char> out(3 * (block / 4 + 2));
    for (std::size_t at = 0; at < code.size(); at += block) {
        std::size_t const length = std::min(block, code.size() - at);
        plain.append(out.data(), std::size_t(decoder.decode(code.data() + at, long(length), out.data())));
    }
    return plain;
}

// The other way to encode: bit by bit.
std::string slowlyEncoded(std::string const& plain)
{
    std::string const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string code;
    for (std::size_t bit = 0; bit < 8 * plain.size(); bit += 6) {
        unsigned value = 0;
        for (std::size_t i = bit; i < bit + 6; ++i)
            value = 2 * value + (i < 8 * plain.size() ? unsigned(plain[i / 8]) >> (7 - i % 8) & 1 : 0);
        code += alphabet[value];
    }
    std::string const pad((4 - code.size() % 4) % 4, '=');
    for (std::size_t line = 72; line <= code.size(); line += 73)
        code.insert(line, 1, '\n');
    return code + pad + '\n';
}

std::string bytes(std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += char(i * 151 + (i >> 8) * 7);
    return text;
}

TEST(Base64, encodesTheKnownVectors)
{
    EXPECT_EQ(encode("", 8), "\n");
    EXPECT_EQ(encode("f", 8), "Zg==\n");
    EXPECT_EQ(encode("fo", 8), "Zm8=\n");
    EXPECT_EQ(encode("foo", 8), "Zm9v\n");
    EXPECT_EQ(encode("foob", 8), "Zm9vYg==\n");
    EXPECT_EQ(encode("fooba", 8), "Zm9vYmE=\n");
    EXPECT_EQ(encode("foobar", 8), "Zm9vYmFy\n");
    EXPECT_EQ(encode("\xFF\xFE\xFD", 8), "//79\n");
    EXPECT_EQ(encode(std::string(3, '\0'), 8), "AAAA\n");
}

TEST(Base64, endsAFullLineWithALineFeedAndTheTextWithAnother)
{
    EXPECT_EQ(encode(std::string(54, 'a'), 54), slowlyEncoded(std::string(54, 'a')));
    EXPECT_EQ(encode(std::string(54, 'a'), 54).substr(72), "\n\n");
    EXPECT_EQ(encode(std::string(55, 'a'), 55).substr(72), "\nYQ==\n");
}

TEST(Base64, encodesTheSameInBlocksOfAnySize)
{
    for (std::size_t const length : {1u, 2u, 3u, 53u, 54u, 55u, 108u, 109u, 500u}) {
        std::string const plain = bytes(length);
        for (std::size_t block = 1; block <= 120; ++block)
            ASSERT_EQ(encode(plain, block), slowlyEncoded(plain)) << length << " in blocks of " << block;
    }
}

TEST(Base64, decodesWhatItEncodedInBlocksOfAnySize)
{
    for (std::size_t length = 0; length < 200; ++length) {
        std::string const plain = bytes(length);
        std::string const code = encode(plain, 1000);
        for (std::size_t block : {1u, 2u, 3u, 4u, 5u, 7u, 73u, 1000u})
            ASSERT_EQ(decode(code, block), plain) << length << " in blocks of " << block;
    }
}

TEST(Base64, givesTheCharacterOfEachValueOfSixBitsAndThePadForTheRest)
{
    base64::encoder const encoder(8);

    EXPECT_EQ(encoder.encode(char(0)), 'A');
    EXPECT_EQ(encoder.encode(char(25)), 'Z');
    EXPECT_EQ(encoder.encode(char(26)), 'a');
    EXPECT_EQ(encoder.encode(char(61)), '9');
    EXPECT_EQ(encoder.encode(char(62)), '+');
    EXPECT_EQ(encoder.encode(char(63)), '/');
    EXPECT_EQ(encoder.encode(char(64)), '=');
    EXPECT_EQ(encoder.encode(char(-1)), '=');
}

TEST(Base64, givesTheValueOfEachCharacterAndANegativeOneForTheRest)
{
    base64::encoder const encoder(8);
    base64::decoder const decoder;
    int known = 0;
    for (int code = 0; code < 256; ++code) {
        int const value = decoder.decode(char(code));
        if (value < 0)
            continue;
        ++known;
        EXPECT_EQ(encoder.encode(char(value)), char(code));
    }
    EXPECT_EQ(known, 64);
}

TEST(Base64, passesOverWhatIsNoCharacterOfIt)
{
    EXPECT_EQ(decode("Z m\n9-v\xFF*\x80Y{g==", 100), "foob");
    EXPECT_EQ(decode("====", 100), "");
    EXPECT_EQ(decode(std::string("Zg\0==", 5), 100), "f");
    EXPECT_EQ(decode("Zg==Zg==", 100), decode("ZgZg", 100));
}

TEST(Base64, keepsAByteThatIsNotWholeForTheNextBlock)
{
    base64::decoder decoder;
    char out[8] = {};

    EXPECT_EQ(decoder.decode("Z", 1, out), 0);
    EXPECT_EQ(decoder.decode("g", 1, out), 1);
    EXPECT_EQ(out[0], 'f');
    EXPECT_EQ(decoder.decode("AA", 2, out), 2);
}

TEST(Base64, beginsAnewAfterInit)
{
    base64::encoder encoder(8);
    base64::decoder decoder;
    char out[16];
    encoder.encode("ab", 2, out);
    decoder.decode("Zm9", 3, out);

    encoder.init();
    decoder.init();

    EXPECT_EQ(encoder.encode_end(out), 1);
    EXPECT_EQ(decoder.decode("Zm9v", 4, out), 3);
    EXPECT_EQ(std::string(out, 3), "foo");
}

TEST(Base64, takesNothingForABlockOfNoOrFewerBytes)
{
    base64::encoder encoder(8);
    base64::decoder decoder;
    char out[1] = {'!'};

    EXPECT_EQ(encoder.encode("abc", 0, out), 0);
    EXPECT_EQ(encoder.encode("abc", -1, out), 0);
    EXPECT_EQ(decoder.decode("abcd", -1, out), 0);
    EXPECT_EQ(out[0], '!');
}

TEST(Base64, encodesAndDecodesStreamsWithBuffersOfAnySize)
{
    std::string const plain = bytes(1000);
    for (int const size : {-1, 0, 1, 2, 3, 53, 54, 55, 999, 1000, 1001, 4096}) {
        std::istringstream in(plain);
        std::ostringstream code;
        base64::encoder(size).encode(in, code);
        EXPECT_EQ(code.str(), slowlyEncoded(plain)) << size;

        std::istringstream codeIn(code.str());
        std::ostringstream back;
        base64::decoder(size).decode(codeIn, back);
        EXPECT_EQ(back.str(), plain) << size;
    }
}

TEST(Base64, encodesAnEmptyStreamAsOneEmptyLine)
{
    std::istringstream in;
    std::ostringstream out;

    base64::encoder(8).encode(in, out);

    EXPECT_EQ(out.str(), "\n");
}

TEST(Base64, stopsAtAnOutputThatTakesNoMore)
{
    std::istringstream in(bytes(1000));
    std::ostringstream out;
    out.setstate(std::ios::badbit);

    base64::encoder(10).encode(in, out);

    EXPECT_EQ(out.str(), "");
    EXPECT_TRUE(out.bad());
}

TEST(Base64, beginsALineAnewAfterInit)
{
    base64::encoder encoder;
    std::string const plain = bytes(54);
    char out[128];
    encoder.encode("abc", 3, out);

    encoder.init();
    long const length = encoder.encode(plain.data(), 54, out);

    EXPECT_EQ(std::string(out, std::size_t(length)), slowlyEncoded(plain).substr(0, 73));
}

TEST(Base64, takesAStreamForATextOfItsOwn)
{
    base64::encoder encoder;
    base64::decoder decoder;
    char out[128];
    encoder.encode("ab", 2, out);
    decoder.decode("Zm9", 3, out);

    std::istringstream plain("foo"), code("Zm9v\n");
    std::ostringstream encoded, decoded;
    encoder.encode(plain, encoded);
    decoder.decode(code, decoded);
    EXPECT_EQ(encoded.str(), "Zm9v\n");
    EXPECT_EQ(decoded.str(), "foo");

    std::istringstream open("fo"), openCode("Zm9");
    std::ostringstream ignored;
    encoder.encode(open, ignored);
    decoder.decode(openCode, ignored);
    ASSERT_EQ(encoder.encode("foo", 3, out), 4);
    EXPECT_EQ(std::string(out, 4), "Zm9v");
    ASSERT_EQ(decoder.decode("Zm9v", 4, out), 3);
    EXPECT_EQ(std::string(out, 3), "foo");
}

}  // namespace
