"""Numbers and tables for a page of Markdown."""


def count(value):
    """12345.6 becomes 12,346."""
    return f"{value:,.0f}"


def digits(value, significant=2):
    """At least so many significant digits, and all those before the point."""
    places = 0
    while value != 0 and places < 6 and abs(value) * 10**places < 10 ** (significant - 1):
        places += 1
    return f"{value:,.{places}f}"


def table(head, rows):
    """The first column to the left, the others to the right."""
    lines = [head, ["---"] + ["---:"] * (len(head) - 1)] + rows
    return "\n".join(f"| {' | '.join(line)} |" for line in lines)
