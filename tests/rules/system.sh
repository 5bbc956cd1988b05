#!/usr/bin/env bash
# Only src/platform asks which system this is, when compiling or running.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

question='Q_OS_|__linux__|__unix__|_WIN32|__APPLE__|QSysInfo::(kernelType|productType)|platformName\(\)'
while IFS=: read -r file line text; do
    report "$file:$line: only src/platform asks for the system: ${text#"${text%%[![:space:]]*}"}"
done < <(sources src tools bench | grep -v '^src/platform/' | xargs -r -d '\n' grep -nHE "$question")
finish
