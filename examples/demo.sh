#!/bin/sh
# Asks the tool about the example system. Usage: demo.sh PATH_OF_REDFISHCONFIG
set -eu

tool=$1
folder=$(dirname "$0")
REDFISHCONFIG_REGISTRY=$folder/registry.json
REDFISHCONFIG_VALUES=$folder/values.json
export REDFISHCONFIG_REGISTRY REDFISHCONFIG_VALUES

ask() {
    printf '\n$ redfishconfig %s\n' "$*"
    "$tool" "$@"
}

ask groups
ask list --menu Boot
ask show BootMode
ask choices FanProfile
