#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Every shell script is clean for shellcheck.
cd "$(dirname "$0")/../.." || exit 2
grep -rlIE --exclude-dir='build*' --exclude-dir=.git '^#!.*\b(ba|da)?sh$' . | xargs shellcheck
