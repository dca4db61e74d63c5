#!/usr/bin/env python3
"""Writes encoderVectors.inc, the table that encoderVectorsTest.cpp compares with.

    python3 tests/text/makeEncoderVectors.py > tests/text/encoderVectors.inc
    python3 tests/text/makeEncoderVectors.py --check tests/text/encoderVectors.inc

Bytes come from a generator of fixed seed, codes from Python's own modules, so that the table is always the same.
"""
import base64
import sys
import urllib.parse

ESCAPED = '%:/+?=&"# '


def byte_stream(seed):
    state = seed
    while True:
        state = (state * 6364136223846793005 + 1442695040888963407) % 2**64
        yield state >> 56


def literal(data):
    """A C++ literal in octal escapes, so that no character depends on its neighbour."""
    return '"' + ''.join('\\%03o' % byte for byte in data) + '"'


def lines_of_72(code):
    """Each full line ends with a line feed, and so does the text."""
    text = code.decode('ascii')
    lines = [text[at:at + 72] for at in range(0, len(text), 72)]
    full = ''.join(line + '\n' for line in lines if len(line) == 72 and line.count('=') == 0)
    rest = '' if not lines or (len(lines[-1]) == 72 and '=' not in lines[-1]) else lines[-1]
    return (full + rest + '\n').encode('ascii')


def escaped_url(data):
    """quote() escapes more than ten characters; the others are put back."""
    text = ''
    for byte in data:
        text += urllib.parse.quote(bytes([byte]), safe='') if chr(byte) in ESCAPED else chr(byte)
    return text.encode('latin-1')


def vectors():
    stream = byte_stream(20)
    for length in list(range(0, 10)) + [52, 53, 54, 55, 56, 107, 108, 109, 200]:
        data = bytes(next(stream) for _ in range(length))
        yield 'base64', data, lines_of_72(base64.b64encode(data))
    words = ESCAPED + 'abcXYZ012-_.~!*()<>[]{}|\\^`@$,;\x7f\xc3\xa4\t\n'
    for length in list(range(1, 12)) + [30, 60, 100]:
        data = bytes(ord(words[next(stream) % len(words)]) for _ in range(length))
        yield 'url', data, escaped_url(data)
    for character in ESCAPED:
        yield 'url', character.encode('ascii'), escaped_url(character.encode('ascii'))


def table():
    yield '// Made by makeEncoderVectors.py: change that, not this.'
    yield '// clang-format off'
    for kind, plain, code in vectors():
        yield '{Kind::%s, %d, %s,\n %d, %s},' % (kind, len(plain), literal(plain), len(code), literal(code))


made = '\n'.join(table()) + '\n'
if len(sys.argv) == 3 and sys.argv[1] == '--check':
    with open(sys.argv[2], encoding='ascii') as kept:
        sys.exit(0 if kept.read() == made else 'the table is not what this script makes')
sys.stdout.write(made)
