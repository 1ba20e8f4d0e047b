#!/usr/bin/env bash
# Gives this machine a printer to print to for real: CUPS with a PDF queue (Debian's cups-pdf),
# so File Print and the CUPS print test go through a spooler and a driver like a user's job.
# Run as root; safe to run again. The PDFs land in ~/PDF of the user who printed (root: /root/PDF),
# as cups-pdf's /etc/cups/cups-pdf.conf says.
set -euo pipefail

queue="${SONALYX_CUPS_QUEUE:-Sonalyx_PDF}"

if [ "$(id -u)" -ne 0 ]; then
  echo "setup-cups-pdf.sh: run as root (it installs packages and starts cupsd)" >&2
  exit 1
fi

export DEBIAN_FRONTEND=noninteractive
if ! dpkg-query -W -f='${Status}' printer-driver-cups-pdf 2>/dev/null | grep -q "install ok installed"; then
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends cups cups-client printer-driver-cups-pdf >/dev/null
fi

# A container has no init system to start it; a machine with one has started it already.
if ! lpstat -r 2>/dev/null | grep -q "is running"; then
  if command -v systemctl >/dev/null && systemctl is-system-running >/dev/null 2>&1; then
    systemctl start cups
  else
    /usr/sbin/cupsd
  fi
  for _ in $(seq 1 50); do
    lpstat -r 2>/dev/null | grep -q "is running" && break
    sleep 0.1
  done
fi

if ! lpstat -p "$queue" >/dev/null 2>&1; then
  ppd=$(lpinfo -m 2>/dev/null | awk '/CUPS-PDF/ {print $1; exit}')
  if [ -z "$ppd" ]; then
    echo "setup-cups-pdf.sh: cups-pdf installed no model (lpinfo -m lists none)" >&2
    exit 1
  fi
  lpadmin -p "$queue" -E -v cups-pdf:/ -m "$ppd"
fi
lpadmin -d "$queue"
cupsenable "$queue"
cupsaccept "$queue"
echo "CUPS queue $queue is ready and the default printer."
