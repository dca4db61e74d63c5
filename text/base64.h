// base64.h: base64 in lines of 72 characters, block by block or as a stream.
//
//   base64::encoder encoder(4096);
//   encoder.init();
//   char out[16];
//   long length = encoder.encode("abc", 3, out);       // 4: "YWJj"
//   length += encoder.encode_end(out + length);        // and a line feed
//
//   std::ifstream in("model.bin", std::ios::binary);
//   encoder.encode(in, std::cout);                     // any size, constant memory
//
// Encoder and decoder keep their place between two blocks, so a text may be given in pieces of
// any size; a new text begins with init(). Neither fails on any input but for want of memory: the
// stream forms take some three times their buffer size. An object belongs to one thread at a time.
#pragma once

#include "zk_export.h"

#include <iosfwd>

namespace base64 {

/// Characters for bytes: "A" to "Z", "a" to "z", "0" to "9", "+" and "/", with "=" as pad.
class ZK_UTIL_API encoder {
public:
    /// `buffersize` is the number of bytes that the stream form reads at a time; below 1 it counts as 4096.
    explicit encoder(int buffersize = 4096);

    /// Begins a new text.
    void init();

    /// The character for a value of 6 bits; "=" for one above 63 (as an unsigned char).
    char encode(char value) const;

    /// Encodes `n` bytes into `out`; gives the number of characters written.
    ///
    /// A line feed (byte 10) follows each full line of 72 characters. `out` needs room for
    /// 4 characters for each 3 bytes begun, and one more for each 54 bytes begun.
    long encode(char const* in, long n, char* out);

    /// Ends the text: what is left of it, its pad, and always a line feed; at most 4 characters.
    /// The state stays: call init() before the next text.
    long encode_end(char* out);

    /// Encodes all of `in` to `out`, from init() to encode_end() and init() again.
    ///
    /// Stops when `out` takes no more; its state tells.
    void encode(std::istream& in, std::ostream& out);

private:
    enum class Step { first, second, third };

    struct State {
        Step step;
        char result;    // the bits that wait for the next byte
        int stepcount;  // groups on the line
    };

    State state_;
    int buffersize_;
};

/// Bytes for characters. What is no character of base64 is passed over: line feeds, blanks, the pad.
class ZK_UTIL_API decoder {
public:
    /// `buffersize` is the number of characters that the stream form reads at a time; below 1 it counts as 4096.
    explicit decoder(int buffersize = 4096);

    /// Begins a new text.
    void init();

    /// The 6 bits for a character, or a negative number for one that is passed over.
    int decode(char character) const;

    /// Decodes `n` characters into `out`, which needs 3 bytes for each 4 characters begun; gives
    /// the number of bytes written. A byte of which some bits are missing waits for the next block.
    long decode(char const* in, long n, char* out);

    /// Decodes all of `in` to `out`, from init() to init(). Bits that make no whole byte are dropped.
    void decode(std::istream& in, std::ostream& out);

private:
    enum class Step { first, second, third, fourth };

    struct State {
        Step step;
        char pending;  // the byte begun
    };

    State state_;
    int buffersize_;
};

}  // namespace base64
