// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { Buffer } from 'node:buffer';

import { badRequest, HttpError, queryError } from './errors.js';

const MAX_BODY_BYTES = 512 * 1024 * 1024;

/** One request and its answer: the parsed address, the body, and the forms of answers. */
export class Exchange {
  constructor(request, response) {
    this.request = request;
    this.response = response;
    const [path, ...query] = request.url.split('?');
    this.parts = path.split('/').filter(Boolean).map(decodePart);
    this.query = new URLSearchParams(query.join('?'));
    this.path = path;
  }

  /** HEAD is answered as GET; node drops the body. */
  get method() {
    return this.request.method === 'HEAD' ? 'GET' : this.request.method;
  }

  get isHead() {
    return this.request.method === 'HEAD';
  }

  header(name) {
    return this.request.headers[name];
  }

  /** Length of the body as announced; a body of unknown length counts as endless. */
  get announcedLength() {
    if (this.header('transfer-encoding') !== undefined)
      return Infinity;
    return Number(this.header('content-length') ?? 0);
  }

  async readBody() {
    if (this.announcedLength > MAX_BODY_BYTES && this.announcedLength !== Infinity)
      throw tooLarge();
    const chunks = [];
    let length = 0;
    for await (const chunk of this.request) {
      length += chunk.length;
      if (length > MAX_BODY_BYTES)
        throw tooLarge();
      chunks.push(chunk);
    }
    return Buffer.concat(chunks, length);
  }

  async readJson() {
    return parseJson(await this.readBody());
  }

  /** The body of a POST, which has to be declared as JSON. */
  async readPostedJson() {
    const type = (this.header('content-type') ?? '').split(';')[0].trim();
    if (type !== 'application/json') {
      throw new HttpError(415, 'bad_content_type', 'Content-Type must be application/json');
    }
    return this.readJson();
  }

  /** The revision that the writer expects, from "If-Match" or "rev"; undefined for none. */
  expectedRevision() {
    const header = this.header('if-match');
    const fromHeader = header === undefined ? undefined : checkRevision(unquoted(header));
    const param = this.query.get('rev');
    const fromQuery = param === null ? undefined : checkRevision(unquoted(param));
    if (fromHeader !== undefined && fromQuery !== undefined && fromHeader !== fromQuery)
      throw badRequest("Document rev and etag have different values");
    return fromHeader ?? fromQuery;
  }

  /** Answers 304 and returns true if the asker already holds this entity. */
  answeredAsUnmodified(etag) {
    if (this.header('if-none-match') !== etag)
      return false;
    this.response.writeHead(304, { ETag: etag });
    this.response.end();
    return true;
  }

  sendJson(status, value, headers = {}) {
    const body = Buffer.from(JSON.stringify(value) + '\n');
    this.response.writeHead(status, {
      'Cache-Control': 'must-revalidate',
      'Content-Type': 'application/json',
      'Content-Length': body.length,
      ...headers,
    });
    this.response.end(this.isHead ? undefined : body);
  }

  sendError(error) {
    const headers = { ...error.headers };
    if (error.close)
      headers.Connection = 'close';
    this.sendJson(error.status, { error: error.error, reason: error.message }, headers);
  }

  /** Absolute address of a path on this server, as in "Location". */
  address(...parts) {
    const host = this.header('host') ?? `127.0.0.1:${this.request.socket.localPort}`;
    return `http://${host}/${parts.map(encodeURIComponent).join('/')}`;
  }
}

/** Readers of query parameters that complain as CouchDB does. */
export const parameter = {
  boolean(query, name, fallback) {
    const text = query.get(name);
    if (text === null)
      return fallback;
    if (text !== 'true' && text !== 'false')
      throw queryError(`Invalid boolean parameter: "${text}"`);
    return text === 'true';
  },

  count(query, name) {
    const text = query.get(name);
    if (text === null)
      return undefined;
    if (!/^-?\d+$/.test(text))
      throw queryError(`Invalid value for integer: "${text}"`);
    if (Number(text) < 0)
      throw queryError(`Invalid value for positive integer: "${text}"`);
    return Number(text);
  },

  /** JSON under one of several names. */
  json(query, ...names) {
    const name = names.find((candidate) => query.has(candidate));
    return name === undefined ? undefined : parseJson(query.get(name));
  },
};

export function checkRevision(revision) {
  if (typeof revision !== 'string' || !/^\d+-[^-]+$/.test(revision))
    throw badRequest('Invalid rev format');
  return revision;
}

export function isObject(value) {
  return typeof value === 'object' && value !== null && !Array.isArray(value);
}

function parseJson(source) {
  try {
    const text = typeof source === 'string'
      ? source
      : new TextDecoder('utf-8', { fatal: true }).decode(source);
    return JSON.parse(text);
  } catch {
    throw badRequest('invalid UTF-8 JSON');
  }
}

function decodePart(part) {
  try {
    return decodeURIComponent(part.replaceAll('+', ' '));
  } catch {
    throw badRequest('Invalid percent-encoding in the path');
  }
}

function unquoted(text) {
  return text.trim().replace(/^"|"$/g, '');
}

function tooLarge() {
  return new HttpError(413, 'too_large', 'the request entity is too large', { close: true });
}
