# The short way in. Each target installs the Debian packages it needs and is missing.
.PHONY: check release run demo build install package test-packages test-arm64 test asan soak fuzz lint translations format bench screenshots windows lint-windows test-windows bench-windows installer clean help
.DEFAULT_GOAL := help

help:           ## what can be made
	@grep -E '^[a-z0-9-]+: .*##' $(MAKEFILE_LIST) | sed -E 's/^([a-z0-9-]+):.*## /  make \1\t/'

run: build      ## build, start the simulated sensor unit and the program connected to it
	@scripts/run.sh

demo: build     ## build and start in demo mode, with no serial line at all
	@scripts/run.sh --demo

build:          ## the executables, in build/release/bin/
	@scripts/install-deps.sh build
	@scripts/build.sh release

install: build  ## put the program where all users find it, and clients' calls start it (PREFIX=/usr/local)
	@cmake --install build/release --prefix $(or $(PREFIX),/usr/local)

package: build  ## a Debian package, in build/release/
	@scripts/install-deps.sh package
	@cd build/release && cpack

test-packages:  ## check the packages, and install, use, upgrade and purge them in clean Debian roots; as root
	@$(MAKE) --no-print-directory package
	@scripts/check-packages.sh build/release
	@scripts/test-packages.sh build/release

test-arm64:     ## cross-build the programs for arm64, in build/arm64/bin/, and run them under qemu-user; as root
	@scripts/install-deps.sh package
	@scripts/test-arm64.sh

check:          ## the quick tier: format, direction of the includes, tests of the logic; under a minute when built
	@scripts/install-deps.sh build test lint
	@scripts/check.sh

test:           ## build and run every test
	@scripts/install-deps.sh build test
	@scripts/build.sh dev
	@ctest --preset dev

asan:           ## the same tests under AddressSanitizer and UndefinedBehaviorSanitizer
	@scripts/install-deps.sh build test
	@scripts/build.sh asan
	@scripts/asan-test.sh

soak:           ## every fault against the real program, then MINUTES=20 of them at random (SEED=N; DOCUMENT=docs/reliability.md)
	@scripts/install-deps.sh build test
	@scripts/build.sh dev
	@scripts/soak.sh --minutes $(or $(MINUTES),20) $(if $(SEED),--seed $(SEED)) $(if $(DOCUMENT),--document $(DOCUMENT))

fuzz:           ## try made-up frames, files, requests … on what reads them, FUZZ_SECONDS=30 for each target
	@scripts/install-deps.sh build test lint
	@scripts/fuzz.sh

lint:           ## check format, layers and, with clang-tidy, the program, its tests and benchmarks
	@scripts/install-deps.sh build test lint
	@scripts/lint.sh

translations:   ## enter new texts of the windows into translations/*.ts, and check that all are translated
	@scripts/install-deps.sh lint
	@scripts/translations.sh --update

format:         ## put the sources into the house format
	@scripts/install-deps.sh lint
	@scripts/sources.sh | xargs -0 clang-format -i

bench:          ## measure everything that has a budget
	@scripts/install-deps.sh build test
	@bench/run.sh

screenshots:    ## make the pictures of the README again
	@scripts/install-deps.sh build test
	@scripts/build.sh release
	@scripts/build.sh bench
	@scripts/screenshots.sh

windows:        ## cross-build orvalis.exe, in build/windows/bin/; Qt for Windows is built first, once
	@scripts/install-deps.sh build windows
	@scripts/windows-qt.sh
	@scripts/windows-mosquitto.sh
	@scripts/build.sh windows

lint-windows: windows  ## clang-tidy for what only Windows has
	@scripts/install-deps.sh lint
	@scripts/windows-lint.sh

test-windows: windows  ## the tests of the logic and of Windows' side, under Wine
	@scripts/install-deps.sh build test windows
	@scripts/windows-test.sh

bench-windows: windows  ## measure what of Windows has a budget, under Wine
	@scripts/install-deps.sh build test windows
	@bench/windows.sh

installer: windows  ## the Windows installer, in build/windows/
	@scripts/windows-installer.sh

release:        ## the packages, the installer and their checksums, from a clean clone, in build/release-VERSION/
	@scripts/install-deps.sh build package windows
	@scripts/release.sh

clean:          ## remove what was built
	rm -rf build
