// Encoders and decoders take any bytes; decoding what was encoded gives the text again, and both do what
// replacing one form after the other does.
#include "text/URLParams.h"
#include "text/base64.h"
#include "text/escapes.h"

#include "tests/text/stepwiseEscapes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::size_t const block = data[0] + 1u;
    std::string const text(reinterpret_cast<char const*>(data) + 1, size - 1);

    base64::encoder encoder;
    base64::decoder decoder;
    std::string code(2 * text.size() + 16, '\0');
    std::string back(text.size() + 16, '\0');
    long codeLength = 0;
    long backLength = 0;
    for (std::size_t at = 0; at < text.size(); at += block) {
        long const length = long(std::min(block, text.size() - at));
        codeLength += encoder.encode(text.data() + at, length, code.data() + codeLength);
    }
    codeLength += encoder.encode_end(code.data() + codeLength);
    for (long at = 0; at < codeLength; at += long(block))
        backLength += decoder.decode(code.data() + at, std::min(long(block), codeLength - at),
                                     back.data() + backLength);
    if (std::string_view(back.data(), std::size_t(backLength)) != text)
        std::abort();
    decoder.init();
    std::string raw(text.size() + 3, '\0');
    decoder.decode(text.data(), long(text.size()), raw.data());

    CString const given(text.data(), int(text.size()));
    CString url(given);
    omEncodeUrl(url);
    if (url != zk::test::stepwiseUrlEncoded(given))
        std::abort();
    omDecodeUrl(url);
    if (url != given)
        std::abort();
    omDecodeUrl(url);
    if (url != zk::test::stepwiseUrlDecoded(given))
        std::abort();
    CString const value(given.GetString());  // XML values end at a NUL
    CString const xml = omString2XMLEncodedValue(given);
    if (xml != zk::test::stepwiseXmlEncoded(value) || omXMLEncodedValue2String(xml) != value)
        std::abort();
    if (omXMLEncodedValue2String(given) != zk::test::stepwiseXmlDecoded(value))
        std::abort();

    URLParams params;
    omGetParamsFromUri(given, params, block % 2 == 0);
    params.getParam(given.Left(3));
    return 0;
}
