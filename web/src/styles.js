// The colour scheme a user keeps for a module, and the answer to temporary authorisation.

import { attempt, define } from './library.js';

const kNoTemporaryGrants = '此系统未设置临时授权功能，请与系统管理员联系。';

export function styleKey(module) {
  return 'tarlo.style.' + module;
}

/** The scheme 1 to 4, or 0 for the system's default; null when the user has chosen none. */
export function readStyle(storage, module) {
  const text = attempt(() => storage.getItem(styleKey(module)));
  return /^[0-4]$/.test(text ?? '') ? Number(text) : null;
}

/**
 * Keeps 0 to 4; other numbers are not schemes and change nothing. A browser that stores nothing is
 * no error.
 */
export function saveStyle(storage, module, scheme) {
  if (!/^[0-4]$/.test(String(scheme))) return;
  attempt(() => storage.setItem(styleKey(module), String(scheme)));
}

export function install(window) {
  const storage = attempt(() => window.localStorage);
  const refuse = () => window.sAlert(kNoTemporaryGrants, false);
  define(window, {
    ZembraSaveStyle: (module, scheme) => saveStyle(storage, module, scheme),
    ZembraGetUserDefineStyle: (module) => readStyle(storage, module),
    GrantPermissionTemp: refuse,
    GrantPermissionTempWFI: refuse,
  });
}
