# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# Sourced by ./dev: gives a machine what building, running and testing need. On Debian the missing
# packages are installed. Elsewhere, or without root, their names are printed and the work goes on
# as long as the tools are there; a missing part of Qt is then CMake's to report.

# setup PART…: any of build, qt6, qt5, server, format, lint and fuzz.
setup()
{
    local part tools=() packages=() missing
    for part; do
        case $part in
            build)
                tools+=("cmake 3.25 cmake" "ninja 0 ninja-build" "c++ 9 build-essential"
                    "ccache 0 ccache")
                # Qt Quick shows no text without a font, and Qt knows MIME types from this list only.
                packages+=(fonts-dejavu-core iso-codes liblz4-dev shared-mime-info strace zlib1g-dev)
                ;;
            qt6)
                packages+=(qt6-base-dev qt6-declarative-dev qt6-declarative-dev-tools
                    qt6-l10n-tools qt6-positioning-dev qml6-module-qtqml
                    qml6-module-qtqml-models qml6-module-qtqml-workerscript
                    qml6-module-qtquick qml6-module-qtquick-controls
                    qml6-module-qtquick-layouts qml6-module-qtquick-templates
                    qml6-module-qtquick-window qml6-module-qttest
                    libqt6svg6 qt6-image-formats-plugins)
                ;;
            qt5)
                packages+=(qtbase5-dev qtdeclarative5-dev qtdeclarative5-dev-tools
                    qtpositioning5-dev qttools5-dev-tools qml-module-qtquick-controls2
                    qml-module-qtquick-layouts qml-module-qtquick2 qml-module-qttest
                    libqt5svg5 qt5-image-formats-plugins)
                ;;
            # Debian's npm conflicts with a Node from elsewhere, which usually brings its own.
            server) tools+=("node 18 nodejs" "npm 0 npm") ;;
            format) tools+=("git 0 git" "clang-format 14 clang-format") ;;
            lint) tools+=("git 0 git" "clang-tidy 14 clang-tidy" "clang++ 14 clang") ;;
            fuzz) tools+=("clang++ 14 clang") packages+=(libclang-rt-dev) ;;
        esac
    done

    mapfile -t missing < <(missing_packages "${packages[@]}" && packages_of_tools "${tools[@]}")
    ((${#missing[@]} == 0)) || install_packages "${missing[@]}"
    mapfile -t missing < <(packages_of_tools "${tools[@]}")
    ((${#missing[@]} == 0)) || fail "still missing, or too old: ${missing[*]}"
}

is_debian()
{
    grep -qsx 'ID=debian' /etc/os-release
}

# Only Debian's own record tells about libraries; on another system nothing is known to be missing
# but tools.
missing_packages()
{
    local package
    for package; do
        is_debian && [[ $(dpkg-query -W -f '${Status}' "$package" 2>&1) == *' installed' ]] \
            || printf '%s\n' "$package"
    done
}

# packages_of_tools "COMMAND VERSION PACKAGE"…: the packages of the commands that are missing or
# older than VERSION, which is 0 where any will do.
packages_of_tools()
{
    local tool command version package
    for tool; do
        read -r command version package <<<"$tool"
        has_tool "$command" "$version" || printf '%s\n' "$package"
    done
}

has_tool()
{
    command -v "$1" >/dev/null || return 1
    [[ $2 != 0 ]] || return 0
    [[ $("$1" --version 2>/dev/null) =~ [0-9]+(\.[0-9]+)* ]] || return 1
    printf '%s\n' "$2" "${BASH_REMATCH[0]}" | sort --check=silent --version-sort
}

install_packages()
{
    local log=build/log/apt.log
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=120)
    if ! is_debian; then
        printf 'Not Debian, so nothing is installed. Needed, by the names of Debian 12:\n%s\n' "$*"
    elif ((EUID != 0)) && ! command -v sudo >/dev/null; then
        printf 'Neither root nor sudo. Needed:\napt-get install --no-install-recommends %s\n' "$*"
    else
        printf 'Installing %s\n' "$*"
        mkdir -p build/log
        { as_root "${apt[@]}" update \
            && as_root "${apt[@]}" install --yes --no-install-recommends "$@"; } >"$log" 2>&1 \
            || printf '%s\n' "$(tail "$log")" "apt-get failed; going on with what is there."
    fi
}

# Without a terminal nobody can answer sudo's question.
as_root()
{
    if ((EUID == 0)); then
        "$@"
    elif [[ -t 2 ]]; then
        sudo "$@"
    else
        sudo --non-interactive "$@"
    fi
}

# The modules of the local server; installed again when the lock file or Node's version changes.
setup_modules()
{
    local state stamp=build/devserver.stamp
    state="$(node --version) $(cksum <devserver/package-lock.json)"
    if [[ -d devserver/node_modules && -r $stamp && $(<"$stamp") == "$state" ]]; then
        return
    fi
    npm ci --ignore-scripts --no-audit --no-fund --prefix devserver
    mkdir -p build
    printf '%s\n' "$state" >"$stamp"
}
