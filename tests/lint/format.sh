#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Every C++ file stands as clang-format would write it. To mend: tools/format
cd "$(dirname "$0")/../.." || exit 2
find src demo tests benchmarks fuzz \( -name '*.h' -o -name '*.cpp' \) -exec clang-format --dry-run --Werror {} +
