// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { Buffer } from 'node:buffer';
import http from 'node:http';
import https from 'node:https';

/** Requests to one database. The user info of its address goes into a header and nowhere else. */
export class Client {
  constructor(address) {
    const url = parseAddress(address);
    this.headers = { Accept: 'application/json' };
    if (url.username || url.password) {
      const credentials = `${decodeURIComponent(url.username)}:${decodeURIComponent(url.password)}`;
      this.headers.Authorization = `Basic ${Buffer.from(credentials).toString('base64')}`;
    }
    url.username = '';
    url.password = '';
    this.base = url.origin + url.pathname.replace(/\/+$/, '');
    this.database = decodeURIComponent(this.base.split('/').pop());
    this.transport = url.protocol === 'https:' ? https : http;
  }

  /** Sends a request; a `body` that is no Buffer goes as JSON. Gives status, headers and body. */
  request(method, path, body, headers = {}) {
    const isJson = body !== undefined && !Buffer.isBuffer(body);
    const payload = isJson ? Buffer.from(JSON.stringify(body)) : body;
    const options = { method, headers: { ...this.headers } };
    if (isJson)
      options.headers['Content-Type'] = 'application/json';
    if (payload)
      options.headers['Content-Length'] = payload.length;
    Object.assign(options.headers, headers);
    return new Promise((resolve, reject) => {
      const request = this.transport.request(this.base + path, options, (response) => {
        readAnswer(response).then(resolve, reject);
      });
      request.on('error', reject);
      request.end(payload);
    });
  }

  /** The JSON of a successful answer; any other answer is an error. */
  async expect(method, path, body) {
    const { status, json } = await this.request(method, path, body);
    if (status < 200 || status > 299 || json === undefined) {
      const detail = json?.error ? `${json.error}: ${json.reason}` : 'no usable answer';
      throw new Error(`${method} ${this.base}${path}: HTTP status ${status}, ${detail}`);
    }
    return json;
  }
}

function parseAddress(address) {
  let url;
  try {
    url = new URL(address);
  } catch {
    throw new Error('the address is not a URL');
  }
  if (!/^https?:$/.test(url.protocol) || url.pathname.replaceAll('/', '') === '')
    throw new Error('the address has to be http://host:port/database');
  return url;
}

async function readAnswer(response) {
  const chunks = [];
  for await (const chunk of response)
    chunks.push(chunk);
  const body = Buffer.concat(chunks);
  return { status: response.statusCode, headers: response.headers, body, json: jsonOf(body) };
}

function jsonOf(body) {
  try {
    return JSON.parse(body.toString());
  } catch {
    return undefined;
  }
}
