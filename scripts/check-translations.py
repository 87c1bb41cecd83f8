#!/usr/bin/env python3
"""Fails on texts that are not translated, and on translations that lost a placeholder or a mnemonic."""

import re
import sys
import xml.etree.ElementTree as ElementTree


def placeholders(text):
    return sorted(set(re.findall(r"%(?:L?[1-9]|n)", text)))


def mnemonics(text):
    return len(re.findall(r"&(?=[^&\s])", text.replace("&&", "")))


def faults(source, translation):
    if not translation.strip():
        yield "is not translated"
        return
    if placeholders(source) != placeholders(translation):
        yield f"has other placeholders: {translation!r}"
    if mnemonics(source) != mnemonics(translation):
        yield f"has {mnemonics(translation)} mnemonics: {translation!r}"
    if source.count("\n") != translation.count("\n"):
        yield f"has other lines: {translation!r}"
    for edge in (slice(None, 1), slice(-1, None)):
        if source[edge].isspace() != translation[edge].isspace():
            yield f"begins or ends with another blank: {translation!r}"


def check(path):
    found = 0
    for context in ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            source = message.findtext("source")
            translation = message.find("translation")
            forms = translation.findall("numerusform") or [translation]
            what = ["is marked " + translation.get("type")] if translation.get("type") else []
            for form in forms:
                what += faults(source, form.text or "")
            for fault in what:
                found += 1
                print(f"{path}: {context.findtext('name')}: {source!r} {fault}", file=sys.stderr)
    return found


if sum([check(path) for path in sys.argv[1:]]):
    sys.exit(1)
