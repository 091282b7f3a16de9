// What a grid asks the server for, and what the answers mean.

export const kAddress = '/TarloTable.Zembra?action=';

/** The body of a request: the grid's key and where its view stands. Empty values stay away. */
export function requestBody(key, view, extra = {}) {
  const body = new URLSearchParams({ grid: key });
  const values = {
    page: view.page > 1 ? view.page : '',
    sort: view.sort || '',
    dir: view.sort && view.descending ? 'desc' : '',
    search: view.search,
    view: view.condition,
    right: view.right,
    ...extra,
  };
  for (const [name, value] of Object.entries(values)) {
    if (value !== '' && value != null) body.set(name, value);
  }
  return body.toString();
}

// The server reads a body as UTF-8 only where it says so.
function post(window, action, body, signal) {
  return window.fetch(kAddress + action, {
    method: 'POST',
    headers: { 'Content-Type': 'application/x-www-form-urlencoded; charset=UTF-8' },
    credentials: 'same-origin',
    body,
    signal,
  });
}

function isJson(response) {
  return (response.headers.get('Content-Type') || '').includes('json');
}

const kSignedOut = '登录可能已失效，请重新登录后再试。';
const kOffline = '无法连接服务器，请检查网络后再试。';

async function answerOf(window, action, body, signal) {
  try {
    return await post(window, action, body, signal);
  } catch (error) {
    if (error.name === 'AbortError') return undefined;
    throw new Error(kOffline);
  }
}

async function failureOf(response) {
  if (!isJson(response)) return new Error(kSignedOut);
  return new Error((await response.json()).error || kOffline);
}

/**
 * The answer's rows; undefined when a later request took its place. Throws an Error whose message
 * is for the user.
 */
export async function fetchRows(window, body, signal) {
  const response = await answerOf(window, 'rows', body, signal);
  if (!response) return undefined;
  if (!isJson(response)) throw new Error(kSignedOut);
  const answer = await response.json();
  if (!answer.ok) throw new Error(answer.error || kOffline);
  return answer;
}

/** The view as a file. Throws as fetchRows does. */
export async function fetchCsv(window, body) {
  const response = await answerOf(window, 'csv', body);
  const type = response.headers.get('Content-Type') || '';
  if (!type.startsWith('text/csv')) throw await failureOf(response);
  return response.blob();
}
