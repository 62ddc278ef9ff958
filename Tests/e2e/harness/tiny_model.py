"""A language model that a real engine loads, and that is made in a moment (GGUF 3, of the kind
"llama"). Its weights are random numbers from a seed: what it says are words that hang on the question
and mean nothing. The file, its tokenizer and its chat template are real; the same arguments give the
same bytes."""

import array
import math
import random
import struct

WORDS = """the a and of to in is it that this page text link reader word line list table image
title about from with for on at by as are was be has have can will may not no yes one two
three first last next short long new old small large good clear open close read write find
show tell ask answer question note point part side way time day year place name number value
people person city house river garden window door road paper book letter story news price
water light colour sound food bread train ship field tree stone winter summer morning evening
Summary Answer Here This That It In For""".split()
MARKS = [".", ",", "?", "!", ":", ";", "\n", "- ", "1. ", "**", "`", " "]
BEGIN, END = "<|im_start|>", "<|im_end|>"
BLANK = "\u2581"
NORMAL, UNKNOWN, CONTROL, BYTE = 1, 2, 3, 6
UINT32, FLOAT32, BOOL, STRING, ARRAY = 4, 6, 7, 8, 9
WIDTH, BLOCKS, HEADS, SHARED_HEADS = 64, 2, 4, 2
TEMPLATE = (
    "{% for message in messages %}"
    "{{ '<|im_start|>' + message['role'] + '\n' + message['content'] + '<|im_end|>' + '\n' }}"
    "{% endfor %}"
    "{% if add_generation_prompt %}{{ '<|im_start|>assistant\n' }}{% endif %}"
)


def make(file, mean_words=80, context=8192, seed=1, template=TEMPLATE, architecture="llama",
         width=WIDTH, blocks=BLOCKS):
    """Writes one that says about so many words before it stops."""
    tokens = _vocabulary()
    shape = _Shape(width, blocks)
    tensors = _tensors(tokens, mean_words, shape, random.Random(seed))
    facts = _facts(tokens, context, template, architecture, shape)
    blob = bytearray(b"GGUF" + struct.pack("<IQQ", 3, len(tensors), len(facts)))
    for key, value in facts:
        blob += _text(key) + value
    offset = 0
    for name, dimensions, data in tensors:
        blob += _text(name) + struct.pack(f"<I{len(dimensions)}Q", len(dimensions), *dimensions)
        blob += struct.pack("<IQ", 0, offset)
        offset += _padded(len(data) * 4)
    blob += bytes(_padded(len(blob)) - len(blob))
    for _, _, data in tensors:
        raw = data.tobytes()
        blob += raw + bytes(_padded(len(raw)) - len(raw))
    file.write_bytes(blob)


class _Shape:
    def __init__(self, width, blocks):
        self.width = width
        self.blocks = blocks


def _padded(size):
    return (size + 31) // 32 * 32


def _vocabulary():
    """(text, score, kind, what it is when something is said) of each token."""
    tokens = [("<unk>", UNKNOWN, "never"), ("<s>", CONTROL, "never"), ("</s>", CONTROL, "never")]
    tokens += [(f"<0x{byte:02X}>", BYTE, "never") for byte in range(256)]
    tokens += [(BEGIN, CONTROL, "never"), (END, CONTROL, "end")]
    said = [BLANK + word for word in WORDS]
    texts = {text: "word" for text in said + [mark.replace(" ", BLANK) for mark in MARKS]}
    # The pieces that the tokenizer joins to reach a word; longer ones win.
    for text in said:
        for length in range(2, len(text)):
            texts.setdefault(text[:length], "never")
    for character in [BLANK, "\n"] + [chr(code) for code in range(33, 127)]:
        texts.setdefault(character, "never")
    tokens += [(text, NORMAL, use) for text, use in texts.items()]
    longest = max(len(text) for text, _, _ in tokens)
    return [(text, -float((longest - len(text)) * 10000 + rank) if kind == NORMAL else 0.0, kind, use)
            for rank, (text, kind, use) in enumerate(tokens)]


def _tensors(tokens, mean_words, shape, numbers):
    """(name, dimensions, values) of each. Direction 0 of every token is a constant, which the last
    layer uses to say words alone, and their end in time. Direction 1 tells a line's end, after which
    there is always a word: what is said is never nothing."""
    width = shape.width
    count, head, inner = len(tokens), width // HEADS, 2 * width

    def gauss(size, spread):
        return array.array("f", (numbers.gauss(0.0, spread) for _ in range(size)))

    ones = array.array("f", [1.0] * width)
    embedding = _embedding(tokens, width, gauss(count * width, 1.0))
    tensors = [("token_embd.weight", [width, count], embedding),
               ("output_norm.weight", [width], ones),
               ("output.weight", [width, count], _output(tokens, mean_words, width, gauss))]
    for block in range(shape.blocks):
        shared = head * SHARED_HEADS
        weights = {"attn_q": ([width, width], 2.0), "attn_k": ([width, shared], 2.0),
                   "attn_v": ([width, shared], 1.0), "attn_output": ([width, width], 1.5),
                   "ffn_gate": ([width, inner], 1.0), "ffn_up": ([width, inner], 1.0),
                   "ffn_down": ([inner, width], 0.6)}
        for name in ("attn_norm", "ffn_norm"):
            tensors.append((f"blk.{block}.{name}.weight", [width], ones))
        for name, (sides, spread) in weights.items():
            values = gauss(sides[0] * sides[1], spread / sides[0] ** 0.5)
            if name in ("attn_output", "ffn_down"):  # they leave both directions alone
                values[:2 * sides[0]] = array.array("f", bytes(8 * sides[0]))
            tensors.append((f"blk.{block}.{name}.weight", sides, values))
    return tensors


def _embedding(tokens, width, values):
    for number, token in enumerate(tokens):
        values[number * width] = 4.0
        values[number * width + 1] = 4.0 if token[0] == "\n" else 0.0
    return values


def _output(tokens, mean_words, width, gauss):
    constant = 4.0 / ((16.0 + (width - 1) * 2.5) / width) ** 0.5  # after the last norm, about
    words = sum(1 for token in tokens if token[3] == "word")
    spread, warmth = 2.0, 0.8  # of the words' logits; the servers' own temperature
    end = warmth * (math.log(words) + (spread / warmth) ** 2 / 2 - math.log(mean_words) + 1.1)
    bias = {"word": 0.0, "never": -60.0, "end": end}
    values = gauss(len(tokens) * width, spread / ((width - 1) ** 0.5 * 0.9))
    for number, token in enumerate(tokens):
        start = number * width
        if token[3] != "word":
            for place in range(start + 1, start + width):
                values[place] *= 0.1
        values[start] = bias[token[3]] / constant
        values[start + 1] = -60.0 / constant if token[3] == "end" else 0.0
    return values


def _facts(tokens, context, template, architecture, shape):
    end = next(number for number, token in enumerate(tokens) if token[0] == END)
    numbers = {"vocab_size": len(tokens), "context_length": context, "embedding_length": shape.width,
               "block_count": shape.blocks, "feed_forward_length": 2 * shape.width,
               "attention.head_count": HEADS, "attention.head_count_kv": SHARED_HEADS,
               "rope.dimension_count": shape.width // HEADS}
    facts = [("general.architecture", _string(architecture)), ("general.type", _string("model")),
             ("general.name", _string("Orvu Tiny")), ("general.file_type", _number(0)),
             ("general.alignment", _number(32))]
    facts += [(f"llama.{name}", _number(value)) for name, value in numbers.items()]
    facts += [("llama.attention.layer_norm_rms_epsilon", _real(1e-5)),
              ("llama.rope.freq_base", _real(10000.0)),
              ("tokenizer.ggml.model", _string("llama")),
              ("tokenizer.ggml.pre", _string("default")),
              ("tokenizer.ggml.tokens", _array(STRING, [token[0] for token in tokens])),
              ("tokenizer.ggml.scores", _array(FLOAT32, [token[1] for token in tokens])),
              ("tokenizer.ggml.token_type", _array(5, [token[2] for token in tokens])),
              ("tokenizer.ggml.unknown_token_id", _number(0)),
              ("tokenizer.ggml.bos_token_id", _number(1)),
              ("tokenizer.ggml.eos_token_id", _number(end)),
              ("tokenizer.ggml.eot_token_id", _number(end)),
              ("tokenizer.chat_template", _string(template))]
    return facts + [(f"tokenizer.ggml.{name}", struct.pack("<IB", BOOL, 0))
                    for name in ("add_bos_token", "add_eos_token", "add_space_prefix")]


def _text(text):
    raw = text.encode()
    return struct.pack("<Q", len(raw)) + raw


def _string(text):
    return struct.pack("<I", STRING) + _text(text)


def _number(value):
    return struct.pack("<II", UINT32, value)


def _real(value):
    return struct.pack("<If", FLOAT32, value)


def _array(kind, items):
    head = struct.pack("<IIQ", ARRAY, kind, len(items))
    if kind == STRING:
        return head + b"".join(map(_text, items))
    return head + struct.pack(f"<{len(items)}{'f' if kind == FLOAT32 else 'i'}", *items)
