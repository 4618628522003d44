"""A number as std::to_chars of C++ writes a double without a format.

The digits are the fewest that read back as the same number. They are written in the shorter of fixed and
scientific notation, in fixed notation where both are equally long. An exponent has a sign and at least
two digits. A whole number in fixed notation has all its own digits, also those beyond the shortest ones.
Negative zero is written as zero.
"""


def digits_of(value):
    """The shortest digits of a positive number, without zeros at the end, and the exponent of the last."""
    mantissa, _, exponent = repr(value).partition("e")
    whole, _, fraction = mantissa.partition(".")
    digits, scale = whole + fraction, int(exponent or 0) - len(fraction)
    stripped = digits.rstrip("0")
    return stripped.lstrip("0"), scale + len(digits) - len(stripped)


def fixed(value, digits, scale):
    if scale >= 0:
        return str(int(value))
    whole = digits[:scale] or "0"
    return f"{whole}.{digits[scale:].rjust(-scale, '0')}"


def scientific(digits, scale):
    exponent = scale + len(digits) - 1
    mantissa = digits[0] + ("." + digits[1:] if len(digits) > 1 else "")
    return f"{mantissa}e{'-' if exponent < 0 else '+'}{abs(exponent):02}"


def shortest(value):
    if value == 0:
        return "0"
    digits, scale = digits_of(abs(value))
    plain, power = fixed(abs(value), digits, scale), scientific(digits, scale)
    return ("-" if value < 0 else "") + (plain if len(plain) <= len(power) else power)
