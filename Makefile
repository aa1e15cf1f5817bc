# The front door. Every target is one line over a preset or a script in ci/.

.DEFAULT_GOAL := help
.PHONY: help setup build demo test check bench fuzz install clean

help:    ## this list
	@sed -n 's/^\([a-z]*\): *.*## /  make \1\t/p' $(MAKEFILE_LIST) | expand -t 16
setup:   ## install the Debian packages that are missing
	@ci/setup build test
build: setup  ## build everything
	@ci/build dev
demo: setup  ## follow the sample's reading, on this terminal
	@ci/build dev varnelle
	@build/dev/apps/varnelle/varnelle demo
test: build  ## run the tests
	@ctest --preset dev
check:   ## what else CI runs: Clang, sanitizers, format, floors, the consumer project
	@ci/check
bench:   ## run the benchmarks beside their peers
	@ci/bench
fuzz:    ## run every fuzz target for a minute
	@ci/fuzz
install: build  ## install into $PREFIX (default /usr/local)
	@cmake --install build/dev --prefix $(or $(PREFIX),/usr/local)
clean:   ## remove what was built
	@rm -rf build
