#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Fails, naming the lines, when a source file is not formatted as .clang-format has it.
set -euo pipefail
cd "$(dirname "$0")/.."
find src tests bench fuzz -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run --Werror
