#!/usr/bin/env bash
# Every source file is as clang-format would write it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

sources src tests tools bench | xargs -r -d '\n' clang-format --style=file --dry-run -Werror
