#!/bin/sh
# Asks the tool about the example system, and for a change of it. Usage: demo.sh PATH_OF_REDFISHCONFIG
set -eu

tool=$1
folder=$(dirname "$0")
REDFISHCONFIG_REGISTRY=$folder/registry.json
REDFISHCONFIG_VALUES=$folder/values.json
export REDFISHCONFIG_REGISTRY REDFISHCONFIG_VALUES

ask() {
    printf '\n$ redfishconfig %s\n' "$*"
    "$tool" "$@" 2>&1
}

ask groups
ask list --menu Boot
ask show BootMode
ask choices FanProfile

# BootMode is locked while Secure Boot is enabled, which show told above; the exit code says so too.
ask set BootMode=Legacy || test $? -eq 1
ask set FanProfile=Quiet TimeZoneOffset=90
