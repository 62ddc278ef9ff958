"""The forms in which a text may be found in a file."""

import base64
import hashlib


def forms(text):
    """As it stands in three encodings; each of them in hexadecimal and within something in Base64;
    and the usual hashes of it, as bytes and in hexadecimal."""
    for encoding in ("utf-8", "utf-16-le", "utf-16-be"):
        data = text.encode(encoding)
        yield data
        yield data.hex().encode()
        yield data.hex().upper().encode()
        yield from _in_base64(data)
    for name in ("md5", "sha1", "sha256"):
        digest = hashlib.new(name, text.encode()).digest()
        yield digest
        yield digest.hex().encode()
        yield from _in_base64(digest)


def _in_base64(data):
    """What doesn't depend on what stands before and behind, for each place that it may begin at."""
    for before in range(3):
        first = (before * 8 + 5) // 6
        end = (before + len(data)) * 8 // 6
        for encode in (base64.standard_b64encode, base64.urlsafe_b64encode):
            yield encode(bytes(before) + data)[first:end]
