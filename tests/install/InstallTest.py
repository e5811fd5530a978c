"""Installs what was built as a packager would, then uses the installed package from outside the tree.

Usage: InstallTest.py SOURCE_DIR BUILD_DIR LIB_DIR WORK_DIR (LIB_DIR is relative to the prefix)
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys

CONSUMER_OUTPUT = """\
0 the setting is read only due to the following expression: ((BootMode==Legacy))
1 1
Final result error: yes
joiner-on-later 1 hidden 1 hidden because Fan is false (rule 0), lint 1
"""


def run(*command, **options):
    print("$", " ".join(str(word) for word in command), flush=True)
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{done.stdout}\nexit code {done.returncode}")
    return done.stdout


def expect(condition, message):
    if not condition:
        sys.exit(message)


def compile_alone(standard, header, prefix):
    run("c++", f"-std={standard}", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only", "-x", "c++",
        "-I", prefix / "include", "-", input=f"#include <{header}>\n")


# Calls the function of the README for a registry, and for a text that is none.
README_MAIN = """
int main()
{
    std::string registry = R"({"RegistryEntries": {"Attributes": [{"AttributeName": "BootMode", "Type": "String"}]}})";
    std::string noRegistry = "{";
    RedfishConfig::SettingValueMap values{{"BootMode", std::string("Uefi")}};
    Show(registry, values);
    Show(noRegistry, values);
}
"""
README_OUTPUT = ["Uefi", "Fail to parse the HTTP response."]


def main():
    source, build, _, work = (pathlib.Path(argument).resolve() for argument in sys.argv[1:5])
    shutil.rmtree(work, ignore_errors=True)
    prefix = work / "prefix"
    libraries = prefix / sys.argv[3]

    run("cmake", "--install", build, "--prefix", prefix)
    # Configuring needs nothing that only the tests need.
    run("cmake", "-S", source, "-B", work / "build", "-G", "Ninja", "-DBUILD_TESTING=OFF",
        "-DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON", "-DCMAKE_DISABLE_FIND_PACKAGE_Python3=ON")

    environment = dict(os.environ, LD_LIBRARY_PATH=str(libraries), PKG_CONFIG_PATH=str(libraries / "pkgconfig"))

    for name, namespace in (("redfishconfig", "RedfishConfig"), ("redfishconfigclient", "RedfishConfig::Client")):
        shared = libraries / f"lib{name}.so"
        soname = re.search(r"SONAME.*\[(.*)\]", run("readelf", "-d", shared)).group(1)
        expect(soname == f"lib{name}.so.1", f"the SONAME is {soname}")
        exported = [line.split(maxsplit=2)[2] for line in run("nm", "-DC", "--defined-only", shared).splitlines()]
        public = rf"((typeinfo|typeinfo name|vtable) for )?{namespace}::"
        strangers = [symbol for symbol in exported if not re.match(public, symbol)]
        expect(exported and not strangers, f"exported besides the public names: {strangers}")

    headers = sorted((prefix / "include" / "RedfishConfig").glob("*.h"))
    expect({header.name for header in headers} >= {
        "Log.h", "RedfishConfig.h", "RedfishConfigExpression.h", "RedfishConfigResult.h", "RedfishConfigSetting.h",
        "RedfishConfigSettingInfo.h", "RedfishConfigSettingManager.h", "SettingValue.h"}, f"headers: {headers}")
    umbrella = (prefix / "include" / "RedfishConfig" / "RedfishConfig.h").read_text()
    for header in headers:
        expect(header.name == "RedfishConfig.h" or f"<RedfishConfig/{header.name}>" in umbrella,
               f"RedfishConfig.h does not include {header.name}")
    client_headers = sorted((prefix / "include" / "RedfishConfig" / "Client").glob("*.h"))
    expect({header.name for header in client_headers} == {
        "Adapt.h", "Attribute.h", "Cascade.h", "Client.h", "Documents.h", "Evaluate.h", "Finding.h", "Json.h", "Lint.h",
        "Model.h", "Rule.h", "SystemValues.h", "Truth.h", "Value.h", "ValueSet.h"}, f"client headers: {client_headers}")
    client_umbrella = (prefix / "include" / "RedfishConfig" / "Client" / "Client.h").read_text()
    for header in client_headers:
        expect(header.name == "Client.h" or f"<RedfishConfig/Client/{header.name}>" in client_umbrella,
               f"Client.h does not include {header.name}")
    for header in headers + client_headers:  # each compiles alone, without warnings
        compile_alone("c++17", header.relative_to(prefix / "include"), prefix)
    for umbrella in ("RedfishConfig/RedfishConfig.h", "RedfishConfig/Client/Client.h"):
        compile_alone("c++20", umbrella, prefix)

    consumer = source / "tests" / "install" / "consumer"
    run("cmake", "-S", consumer, "-B", work / "consumer", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
        "-DCMAKE_BUILD_TYPE=Debug")
    run("cmake", "--build", work / "consumer")
    expect(run(work / "consumer" / "consumer") == CONSUMER_OUTPUT, "the consumer built with find_package answers otherwise")

    flags = run("pkg-config", "--cflags", "--libs", "redfishconfig-client", env=environment).split()
    run("c++", "-std=c++17", consumer / "consumer.cpp", *flags, "-o", work / "with-pkg-config")
    expect(run(work / "with-pkg-config", env=environment) == CONSUMER_OUTPUT,
           "the consumer built with pkg-config answers otherwise")

    example = re.search(r"```cpp\n(.*?)```", (source / "README.md").read_text(), re.DOTALL).group(1)
    (work / "readme.cpp").write_text(example + README_MAIN)
    flags = run("pkg-config", "--cflags", "--libs", "redfishconfig", env=environment).split()
    run("c++", "-std=c++17", work / "readme.cpp", *flags, "-o", work / "readme")
    shown = run(work / "readme", env=environment).splitlines()
    expect(shown == README_OUTPUT, f"the example of the README shows {shown}")

    run("cmake", "-S", source / "examples", "-B", work / "examples", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
        "-DCMAKE_BUILD_TYPE=Debug")
    run("cmake", "--build", work / "examples")

    version = run(prefix / "bin" / "redfishconfig", "--version", env=environment)
    expect(version.startswith("redfishconfig 1."), f"the installed tool says {version}")
    print("installed and used")


if __name__ == "__main__":
    main()
