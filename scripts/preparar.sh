# Installs what building needs and is missing; sourced by ./run and ./test from the project's root (POSIX sh).
# With everything in place it only asks dpkg and compares two files.

paquetes_construir="build-essential cmake ninja-build ccache qt6-base-dev libqt6svg6 qt6-svg-dev qt6-multimedia-dev libargon2-dev unixodbc-dev \
qt6-translations-l10n breeze-icon-theme"
paquetes_usar="libqt6widgets6 qt6-qpa-plugins libqt6svg6 libqt6multimedia6 libargon2-1 unixodbc tdsodbc fonts-dejavu-core fonts-liberation2"

decir() { printf '%s\n' "$*" >&2; }

como_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        decir "Faltan programas y para instalarlos se necesita ser root o tener sudo: $*"
        exit 1
    fi
}

instalado() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

instalar_paquetes() {
    faltan=
    for paquete in "$@"; do
        instalado "$paquete" || faltan="$faltan $paquete"
    done
    [ -z "$faltan" ] && return 0
    command -v apt-get >/dev/null 2>&1 || { decir "Faltan estos paquetes de Debian:$faltan"; exit 1; }
    decir "Instalando:$faltan"
    como_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    # shellcheck disable=SC2086
    como_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $faltan >&2
}

# The database engine's source: brought by the npm client at the version and integrity of the lock file.
instalar_motor() {
    if [ -f node_modules/better-sqlite3-multiple-ciphers/deps/sqlite3/sqlite3.c ] \
        && cmp -s package-lock.json node_modules/.lock-instalado; then
        return 0
    fi
    command -v npm >/dev/null 2>&1 || instalar_paquetes npm
    decir "Trayendo el motor de base de datos..."
    npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >&2
    cp package-lock.json node_modules/.lock-instalado
}

# construir PRESET [TARGET...]
construir() {
    preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >&2
    # Everything, when no target is named; the output only when something has to be done.
    cmake --build --preset "$preset" ${1+--target "$@"} >&2
}
