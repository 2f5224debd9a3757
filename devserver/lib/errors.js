// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

/** An answer that is not a success: status, CouchDB's error word and its reason. */
export class HttpError extends Error {
  constructor(status, error, reason, { close = false, headers = {} } = {}) {
    super(reason);
    this.status = status;
    this.error = error;
    this.close = close;
    this.headers = headers;
  }
}

export const badRequest = (reason) => new HttpError(400, 'bad_request', reason);
export const conflict = (options) =>
  new HttpError(409, 'conflict', 'Document update conflict.', options);
export const notFound = (reason) => new HttpError(404, 'not_found', reason);
export const queryError = (reason) => new HttpError(400, 'query_parse_error', reason);
export const databaseMissing = () => notFound('Database does not exist.');

/** The answer for anything thrown while a request was handled. */
export function toHttpError(error) {
  if (error instanceof HttpError)
    return error;
  if (error?.status === 409)
    return conflict();
  if (error?.status === 404)
    return notFound(error.reason ?? error.message ?? 'missing');
  if (error?.status === 400)
    return new HttpError(400, error.name, error.message);
  console.error('Request failed:', error);
  return new HttpError(500, 'internal_server_error', error?.message || 'Unknown failure');
}
